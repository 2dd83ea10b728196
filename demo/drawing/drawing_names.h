#pragma once

#include <QHash>
#include <QString>

namespace velmo {

// The names that a drawing's expressions may use: the symbol's variables and what LET has named.
class DrawingNames {
public:
    // A variable whose value is text; it has to be a number only where an expression uses it.
    void DefineText(const QString& name, const QString& value) { values_.insert(name, {value, 0, true}); }
    void Define(const QString& name, double value) { values_.insert(name, {{}, value, false}); }

    bool Contains(const QString& name) const { return values_.contains(name); }
    // Throws 5 when nothing has that name, 13 when its value is no number.
    double Value(const QString& name) const;

private:
    struct Entry {
        QString text;
        double number = 0;
        bool isText = false;
    };

    QHash<QString, Entry> values_;
};

} // namespace velmo
