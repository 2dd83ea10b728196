#include "variables/table_columns.h"

namespace velmo {

TableColumns ReadTableColumns(const WorkDatabase& work, int columns) {
    TableColumns result(static_cast<size_t>(columns));
    Database database = work.Open(Database::Access::Read);
    for (RecordSet rows = SelectVariables(database); !rows.Eof(); rows.MoveNext()) {
        const int column = rows.Integer(u"ValDis");
        // Of several variables of one column the first counts.
        if (column < 1 || column > columns || result[size_t(column - 1)])
            continue;
        result[size_t(column - 1)] =
            TableColumn{rows.Integer(u"ValNum"), rows.Integer(u"ValNo"), rows.Integer(u"ValLen"),
                        rows.Integer(u"ValSmall"), rows.Text(u"ValName")};
    }
    return result;
}

std::vector<int> ColumnsWithLongNumber(const TableColumns& columns) {
    constexpr int longest = 9999;
    std::vector<int> found;
    for (size_t i = 0; i < columns.size(); ++i) {
        if (columns[i] && columns[i]->row > 0 && (columns[i]->number < 0 || columns[i]->number > longest))
            found.push_back(int(i) + 1);
    }
    return found;
}

std::vector<int> ColumnsWithoutVariable(const TableColumns& columns) {
    std::vector<int> found;
    for (size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i])
            found.push_back(int(i) + 1);
    }
    return found;
}

} // namespace velmo
