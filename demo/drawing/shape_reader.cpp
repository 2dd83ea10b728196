#include "drawing/shape_reader.h"

#include "drawing/curve.h"
#include "drawing/expression.h"
#include "drawing/stroke_font.h"
#include "platform/runtime_error.h"

#include <algorithm>

namespace velmo {
namespace {

struct Argument {
    QString text;
    bool isQuoted = false;
};

[[noreturn]] void Fail(const QString& what) {
    throw RuntimeError(ErrorNumber::InvalidArgument, what);
}

// An instruction line: the keyword and its arguments, separated by blanks.
class Instruction {
public:
    explicit Instruction(const QString& line) {
        qsizetype at = 0;
        while (true) {
            while (at < line.size() && line[at].isSpace())
                ++at;
            if (at == line.size())
                break;
            arguments_.push_back(line[at] == u'"' ? Quoted(line, at) : Plain(line, at));
        }
        if (!arguments_.empty()) {
            keyword_ = arguments_.front().text;
            arguments_.erase(arguments_.begin());
        }
    }

    bool IsEmpty() const { return keyword_.isEmpty() || keyword_.startsWith(u';'); }
    const QString& Keyword() const { return keyword_; }
    std::size_t Count() const { return arguments_.size(); }

    void ExpectCount(std::size_t count) const {
        if (Count() != count)
            Fail(QStringLiteral("%1 の引数は %2 個です (%3 個あります)。")
                     .arg(keyword_)
                     .arg(count)
                     .arg(Count()));
    }

    const QString& Word(std::size_t index) const {
        if (arguments_[index].isQuoted)
            Fail(QStringLiteral("%1 の %2 番目の引数は文字列ではいけません。").arg(keyword_).arg(index + 1));
        return arguments_[index].text;
    }

    // A text between double quotes whose letters the drawing font has.
    const QString& Text(std::size_t index) const {
        const Argument& argument = arguments_[index];
        if (!argument.isQuoted)
            Fail(
                QStringLiteral("%1 の %2 番目の引数は \" で囲んだ文字列です。").arg(keyword_).arg(index + 1));
        for (const QChar letter : argument.text) {
            if (!StrokeFont::Has(letter))
                Fail(QStringLiteral("図面の文字に「%1」はありません。").arg(letter));
        }
        return argument.text;
    }

private:
    static Argument Quoted(const QString& line, qsizetype& at) {
        const qsizetype end = line.indexOf(u'"', at + 1);
        if (end < 0)
            Fail(QStringLiteral("文字列の終わりの \" がありません。"));
        Argument argument{line.mid(at + 1, end - at - 1), true};
        at = end + 1;
        return argument;
    }

    static Argument Plain(const QString& line, qsizetype& at) {
        const qsizetype start = at;
        while (at < line.size() && !line[at].isSpace())
            ++at;
        return {line.mid(start, at - start), false};
    }

    QString keyword_;
    std::vector<Argument> arguments_;
};

class ShapeReader {
public:
    explicit ShapeReader(DrawingNames names) : names_(std::move(names)) {}

    void Read(const QString& line) {
        if (TestCondition(Keyword(line)) || !isShown_)
            return;
        const Instruction instruction(line);
        if (!instruction.IsEmpty())
            Execute(instruction);
    }

    void Finish() const {
        if (inCondition_)
            Fail(QStringLiteral("IF に対する END がありません。"));
    }

    std::vector<Shape> Shapes() && { return std::move(shapes_); }

private:
    using Handler = void (ShapeReader::*)(const Instruction&);

    struct Command {
        QLatin1String keyword;
        Handler handler;
    };

    static QString Keyword(const QString& line) { return line.trimmed(); }

    // True when the line was IF or END.
    bool TestCondition(const QString& line) {
        if (line == u"END") {
            if (!inCondition_)
                Fail(QStringLiteral("END に対する IF がありません。"));
            inCondition_ = false;
            isShown_ = true;
            return true;
        }
        if (line != u"IF" && !line.startsWith(QStringLiteral("IF ")))
            return false;
        if (inCondition_)
            Fail(QStringLiteral("IF の中に IF は書けません。"));
        const Instruction instruction(line);
        instruction.ExpectCount(1);
        isShown_ = Value(instruction, 0) > 0;
        inCondition_ = true;
        return true;
    }

    void Execute(const Instruction& instruction) {
        static constexpr Command commands[] = {
            {QLatin1String("LET"), &ShapeReader::Let},       {QLatin1String("COLOR"), &ShapeReader::Colour},
            {QLatin1String("STYLE"), &ShapeReader::Style},   {QLatin1String("LINE"), &ShapeReader::Line},
            {QLatin1String("POLY"), &ShapeReader::Poly},     {QLatin1String("CLOSED"), &ShapeReader::Closed},
            {QLatin1String("RECT"), &ShapeReader::Rect},     {QLatin1String("CIRCLE"), &ShapeReader::Circle},
            {QLatin1String("ARC"), &ShapeReader::Arc},       {QLatin1String("FILL"), &ShapeReader::Fill},
            {QLatin1String("HATCH"), &ShapeReader::Hatch},   {QLatin1String("DIM"), &ShapeReader::Dimension},
            {QLatin1String("LEADER"), &ShapeReader::Leader}, {QLatin1String("TEXT"), &ShapeReader::Text},
        };
        const auto* const command =
            std::find_if(std::begin(commands), std::end(commands),
                         [&](const Command& c) { return c.keyword == instruction.Keyword(); });
        if (command == std::end(commands))
            velmo::Fail(QStringLiteral("「%1」という命令はありません。").arg(instruction.Keyword()));
        (this->*command->handler)(instruction);
    }

    double Value(const Instruction& instruction, std::size_t index) const {
        return EvaluateExpression(instruction.Word(index), names_);
    }

    QPointF Point(const Instruction& instruction, std::size_t index) const {
        const double x = Value(instruction, index);
        return {x, Value(instruction, index + 1)};
    }

    // The points from argument index to the last one; at least "fewest".
    Points PointsFrom(const Instruction& instruction, std::size_t index, std::size_t fewest) const {
        const std::size_t count = instruction.Count() < index ? 0 : instruction.Count() - index;
        if (count % 2 != 0 || count / 2 < fewest)
            velmo::Fail(QStringLiteral("%1 には x と y の組が %2 組以上要ります。")
                            .arg(instruction.Keyword())
                            .arg(fewest));
        Points points;
        for (std::size_t i = index; i < instruction.Count(); i += 2)
            points.push_back(Point(instruction, i));
        return points;
    }

    double Radius(const Instruction& instruction, std::size_t index) const {
        const double radius = Value(instruction, index);
        if (!(radius > 0))
            velmo::Fail(QStringLiteral("半径 %1 は正の値ではありません。").arg(radius));
        return radius;
    }

    void AddPath(Points points) { shapes_.emplace_back(PathShape{colour_, style_, std::move(points)}); }

    void Let(const Instruction& instruction) {
        instruction.ExpectCount(2);
        const QString& name = instruction.Word(0);
        const bool isName =
            (name[0].isLetter() || name[0] == u'_') &&
            std::all_of(name.begin(), name.end(), [](QChar c) { return c.isLetterOrNumber() || c == u'_'; });
        if (!isName)
            velmo::Fail(QStringLiteral("「%1」は名前になりません。").arg(name));
        names_.Define(name, Value(instruction, 1));
    }

    void Colour(const Instruction& instruction) {
        instruction.ExpectCount(1);
        const double number = Value(instruction, 0);
        if (number < 0 || number > 255 || number != static_cast<int>(number))
            velmo::Fail(QStringLiteral("色番号 %1 は 0 から 255 の整数ではありません。").arg(number));
        colour_ = static_cast<int>(number);
    }

    void Style(const Instruction& instruction) {
        instruction.ExpectCount(1);
        const QString& name = instruction.Word(0);
        if (name == u"solid")
            style_ = LineStyle::Solid;
        else if (name == u"center")
            style_ = LineStyle::Center;
        else if (name == u"hidden")
            style_ = LineStyle::Hidden;
        else
            velmo::Fail(
                QStringLiteral("線種「%1」は solid, center, hidden のどれでもありません。").arg(name));
    }

    void Line(const Instruction& instruction) {
        instruction.ExpectCount(4);
        AddPath({Point(instruction, 0), Point(instruction, 2)});
    }

    void Poly(const Instruction& instruction) { AddPath(PointsFrom(instruction, 0, 2)); }

    void Closed(const Instruction& instruction) {
        Points points = PointsFrom(instruction, 0, 3);
        points.push_back(points.front());
        AddPath(std::move(points));
    }

    void Rect(const Instruction& instruction) {
        instruction.ExpectCount(4);
        const QPointF a = Point(instruction, 0);
        const QPointF b = Point(instruction, 2);
        AddPath({a, {b.x(), a.y()}, b, {a.x(), b.y()}, a});
    }

    void Circle(const Instruction& instruction) {
        instruction.ExpectCount(3);
        const double radius = Radius(instruction, 2);
        AddPath(EllipseArc(Point(instruction, 0), radius, radius, 0, 360));
    }

    void Arc(const Instruction& instruction) {
        instruction.ExpectCount(5);
        const double radius = Radius(instruction, 2);
        const double from = Value(instruction, 3);
        double to = Value(instruction, 4);
        if (std::abs(from) > 3600 || std::abs(to) > 3600)
            velmo::Fail(QStringLiteral("円弧の角度 %1, %2 が大きすぎます。").arg(from).arg(to));
        while (to <= from)
            to += 360;
        AddPath(EllipseArc(Point(instruction, 0), radius, radius, from, std::min(to, from + 360)));
    }

    void Fill(const Instruction& instruction) {
        shapes_.emplace_back(AreaShape{colour_, PointsFrom(instruction, 0, 3)});
    }

    void Hatch(const Instruction& instruction) {
        if (instruction.Count() == 0)
            instruction.ExpectCount(7);
        const Points polygon = PointsFrom(instruction, 1, 3);
        for (Points& line : SectionLines(Value(instruction, 0), polygon))
            shapes_.emplace_back(PathShape{colour_, LineStyle::Solid, std::move(line)});
    }

    void Dimension(const Instruction& instruction) {
        instruction.ExpectCount(6);
        const QPointF from = Point(instruction, 0);
        const QPointF to = Point(instruction, 2);
        if (from == to)
            velmo::Fail(QStringLiteral("寸法の 2 点が同じ位置です。"));
        shapes_.emplace_back(DimensionShape{colour_, from, to, Value(instruction, 4), instruction.Text(5)});
    }

    void Leader(const Instruction& instruction) {
        instruction.ExpectCount(5);
        const QPointF tip = Point(instruction, 0);
        const QPointF end = Point(instruction, 2);
        if (tip == end)
            velmo::Fail(QStringLiteral("引出線の 2 点が同じ位置です。"));
        shapes_.emplace_back(LeaderShape{colour_, tip, end, instruction.Text(4)});
    }

    void Text(const Instruction& instruction) {
        instruction.ExpectCount(4);
        const double height = Value(instruction, 2);
        if (!(height > 0))
            velmo::Fail(QStringLiteral("文字の高さ %1 は正の値ではありません。").arg(height));
        shapes_.emplace_back(LetteringShape{colour_, Point(instruction, 0), height, instruction.Text(3)});
    }

    DrawingNames names_;
    std::vector<Shape> shapes_;
    int colour_ = 7;
    LineStyle style_ = LineStyle::Solid;
    bool inCondition_ = false;
    bool isShown_ = true;
};

} // namespace

std::vector<Shape> ReadShapes(const SymbolGeometry& geometry, DrawingNames names) {
    ShapeReader reader(std::move(names));
    qint64 line = 0;
    try {
        for (const GeometryLine& next : geometry.lines) {
            line = next.number;
            reader.Read(next.text);
        }
        reader.Finish();
    } catch (RuntimeError& error) {
        throw error.InFile(geometry.path).AtLine(line);
    }
    return std::move(reader).Shapes();
}

} // namespace velmo
