#include "drawing/drawing_names.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace velmo {

double DrawingNames::Value(const QString& name) const {
    const auto found = values_.constFind(name);
    if (found == values_.constEnd())
        throw RuntimeError(ErrorNumber::InvalidArgument,
                           QStringLiteral("「%1」という名前の変数はありません。").arg(name));
    if (!found->isText)
        return found->number;
    try {
        return ToNumber(found->text);
    } catch (const RuntimeError&) {
        throw RuntimeError(
            ErrorNumber::TypeMismatch,
            QStringLiteral("変数「%1」の値「%2」は数値ではありません。").arg(name, found->text));
    }
}

} // namespace velmo
