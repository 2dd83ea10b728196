#include "drawing/expression.h"

#include "platform/runtime_error.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

namespace velmo {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

struct Function {
    QLatin1String name;
    std::size_t argumentCount;
    std::function<double(const std::vector<double>&)> apply;
};

// sin(180) and the like are exactly what a drawing expects, not 1.2e-16.
double WithoutRoundingNoise(double value) {
    return std::abs(value) < 1e-12 ? 0.0 : value;
}

const Function* FindFunction(const QString& name) {
    using Arguments = std::vector<double>;
    static const std::vector<Function> functions = {
        {QLatin1String("sqrt"), 1, [](const Arguments& a) { return std::sqrt(a[0]); }},
        {QLatin1String("sin"), 1,
         [](const Arguments& a) { return WithoutRoundingNoise(std::sin(a[0] * kDegree)); }},
        {QLatin1String("cos"), 1,
         [](const Arguments& a) { return WithoutRoundingNoise(std::cos(a[0] * kDegree)); }},
        {QLatin1String("tan"), 1,
         [](const Arguments& a) { return WithoutRoundingNoise(std::tan(a[0] * kDegree)); }},
        {QLatin1String("atan2"), 2, [](const Arguments& a) { return std::atan2(a[0], a[1]) / kDegree; }},
        {QLatin1String("min"), 2, [](const Arguments& a) { return std::min(a[0], a[1]); }},
        {QLatin1String("max"), 2, [](const Arguments& a) { return std::max(a[0], a[1]); }},
        {QLatin1String("abs"), 1, [](const Arguments& a) { return std::abs(a[0]); }},
    };
    const auto found =
        std::find_if(functions.begin(), functions.end(), [&](const Function& f) { return f.name == name; });
    return found == functions.end() ? nullptr : &*found;
}

// A cursor over the text, one function per level of precedence.
class Evaluator {
public:
    Evaluator(const QString& text, const DrawingNames& names) : text_(text), names_(names) {}

    double Run() {
        const double value = Sum();
        if (at_ < text_.size())
            Fail(QStringLiteral("「%1」の前までしか読めません。").arg(text_.mid(at_)));
        return value;
    }

private:
    // Deeper nesting is a mistake in the file, and must not exhaust the stack.
    static constexpr int kDeepest = 100;

    [[noreturn]] void Fail(const QString& what) const {
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("式「%1」: %2").arg(text_, what));
    }

    double Finite(double value) const {
        if (!std::isfinite(value))
            Fail(QStringLiteral("値が計算できません。"));
        return value;
    }

    QChar Peek() const { return at_ < text_.size() ? text_[at_] : QChar(); }

    bool Accept(char16_t expected) {
        if (Peek() != expected)
            return false;
        ++at_;
        return true;
    }

    double Sum() {
        double value = Product();
        while (true) {
            if (Accept(u'+'))
                value = Finite(value + Product());
            else if (Accept(u'-'))
                value = Finite(value - Product());
            else
                return value;
        }
    }

    double Product() {
        double value = Factor();
        while (true) {
            if (Accept(u'*')) {
                value = Finite(value * Factor());
            } else if (Accept(u'/')) {
                const double divisor = Factor();
                if (divisor == 0)
                    Fail(QStringLiteral("0 で割っています。"));
                value = Finite(value / divisor);
            } else {
                return value;
            }
        }
    }

    double Factor() {
        if (++depth_ > kDeepest)
            Fail(QStringLiteral("入れ子が深すぎます。"));
        const double value = Accept(u'-') ? -Factor() : Primary();
        --depth_;
        return value;
    }

    double Primary() {
        if (Accept(u'(')) {
            const double value = Sum();
            Expect(u')');
            return value;
        }
        const QChar next = Peek();
        if (next.isLetter() || next == u'_')
            return NameOrCall();
        return Number();
    }

    double Number() {
        const qsizetype start = at_;
        while (at_ < text_.size() && (text_[at_].isDigit() || text_[at_] == u'.'))
            ++at_;
        bool isNumber = false;
        const double value = QStringView(text_).mid(start, at_ - start).toDouble(&isNumber);
        if (!isNumber) {
            at_ = start;
            Fail(at_ < text_.size() ? QStringLiteral("「%1」は数値ではありません。").arg(text_.mid(at_))
                                    : QStringLiteral("途中で終わっています。"));
        }
        return value;
    }

    double NameOrCall() {
        const qsizetype start = at_;
        while (Peek().isLetterOrNumber() || Peek() == u'_')
            ++at_;
        const QString name = text_.mid(start, at_ - start);
        return Accept(u'(') ? Call(name) : names_.Value(name);
    }

    double Call(const QString& name) {
        const Function* function = FindFunction(name);
        if (!function)
            Fail(QStringLiteral("「%1」という関数はありません。").arg(name));
        std::vector<double> arguments;
        do {
            arguments.push_back(Sum());
        } while (Accept(u','));
        Expect(u')');
        if (arguments.size() != function->argumentCount)
            Fail(QStringLiteral("関数「%1」の引数は %2 個です。").arg(name).arg(function->argumentCount));
        return Finite(function->apply(arguments));
    }

    void Expect(char16_t wanted) {
        if (!Accept(wanted))
            Fail(QStringLiteral("「%1」がありません。").arg(QChar(wanted)));
    }

    const QString& text_;
    const DrawingNames& names_;
    qsizetype at_ = 0;
    int depth_ = 0;
};

} // namespace

double EvaluateExpression(const QString& text, const DrawingNames& names) {
    return Evaluator(text, names).Run();
}

} // namespace velmo
