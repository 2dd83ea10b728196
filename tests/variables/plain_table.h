#pragma once

#include "platform/code_page.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace velmo {

// What the table editor is compared with: the same table as a plain list of rows, told in the plainest way.
struct PlainTable {
    struct Variable {
        int row = 0;
        int number = 0;
        QString name;
        int column = 0;
        int width = 0;
        int small = 0;
    };

    // Row 0 is the header; columns count from 0.
    std::vector<std::vector<QString>> cells;
    // The comment column first, then by rows.
    std::vector<Variable> variables;

    int Rows() const { return int(cells.size()) - 1; }
    int Columns() const { return int(cells.front().size()); }

    // The variable of a column, 1-based.
    Variable* Of(int column) {
        for (Variable& variable : variables) {
            if (variable.column == column)
                return &variable;
        }
        return nullptr;
    }
    std::vector<int> Hidden() const {
        std::vector<int> rows;
        for (const Variable& variable : variables) {
            if (variable.column == 0)
                rows.push_back(variable.row);
        }
        return rows;
    }

    void InsertRow(int row, std::vector<QString> texts) {
        cells.insert(cells.begin() + row, std::move(texts));
    }
    void InsertRow(int row) { InsertRow(row, std::vector<QString>(size_t(Columns()))); }
    void DeleteRow(int row) { cells.erase(cells.begin() + row); }
    void SwapRows(int row) { std::swap(cells[size_t(row)], cells[size_t(row) + 1]); }

    void DeleteColumn(int column) {
        for (std::vector<QString>& row : cells)
            row.erase(row.begin() + column - 1);
        for (Variable& variable : variables) {
            if (variable.column == column)
                variable.column = 0;
            else if (variable.column > column)
                --variable.column;
        }
    }
    // With the one right of it.
    void SwapColumns(int column) {
        for (std::vector<QString>& row : cells)
            std::swap(row[size_t(column) - 1], row[size_t(column)]);
        for (Variable& variable : variables) {
            if (variable.column == column)
                variable.column = column + 1;
            else if (variable.column == column + 1)
                variable.column = column;
        }
    }
    void Show(int variableRow, int column) {
        for (std::vector<QString>& row : cells)
            row.insert(row.begin() + (column - 1), QString());
        for (Variable& variable : variables) {
            if (variable.column >= column)
                ++variable.column;
        }
        Variable& shown = variables[size_t(variableRow)];
        shown.column = column;
        shown.width = shown.width == 0 ? 10 : shown.width;
        cells[0][size_t(column) - 1] = shown.name;
    }
    void Rename(int variableRow, const QString& name) {
        Variable& variable = variables[size_t(variableRow)];
        variable.name = name;
        if (variable.column > 0)
            cells[0][size_t(variable.column) - 1] = name;
    }

    // The bytes of its file.
    QByteArray File() {
        QStringList lines{QString(), QString::number(Columns())};
        for (int column = 1; column <= Columns(); ++column) {
            lines << QString::number(column);
            if (const Variable* variable = Of(column))
                lines << (variable->row == 0 ? QStringLiteral("ｺﾒﾝﾄ")
                                             : QString::asprintf("V%04d", variable->number))
                      << QString::number(variable->width) << QString::number(variable->small)
                      << variable->name;
        }
        lines << QString::number(Rows());
        for (int row = 1; row <= Rows(); ++row) {
            QString line;
            for (int column = 1; column <= Columns(); ++column) {
                if (const Variable* variable = Of(column))
                    line += cells[size_t(row)][size_t(column) - 1].rightJustified(variable->width);
            }
            lines << line;
        }
        return EncodeCodePage(lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
    }

    // As it is when it was read from its file: the rows of one first value stand together.
    PlainTable Read(const std::vector<Variable>& defined) const {
        PlainTable read{{cells[0]}, defined};
        for (size_t i = 0; i < variables.size(); ++i) {
            if (variables[i].column > 0)
                read.variables[i] = variables[i];
        }
        std::vector<std::vector<QString>> rows(cells.begin() + 1, cells.end());
        for (std::vector<QString>& row : rows) {
            for (QString& text : row)
                text = text.trimmed();
        }
        while (!rows.empty()) {
            const QString first = rows.front().front();
            const auto rest =
                std::stable_partition(rows.begin(), rows.end(), [&first](const std::vector<QString>& row) {
                    return row.front() == first;
                });
            read.cells.insert(read.cells.end(), rows.begin(), rest);
            rows.erase(rows.begin(), rest);
        }
        if (read.Rows() == 0)
            read.InsertRow(1);
        return read;
    }
};

} // namespace velmo
