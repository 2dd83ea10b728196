#include "cad_play.h"

#include "cad_side/drawing_view.h"

#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace velmo {
namespace {

// Two crossings of the drawing's grid above the symbol, and what lies between them.
const QPointF kMeasureFrom(0, 30);
const QPointF kMeasureTo(60, 30);
const QString kMeasuredDistance = QStringLiteral("60");

} // namespace

CadPlay::CadPlay(CadWindow& window, PlayedRunner& runner, PlayChoice choice, QString pictures)
    : window_(window), runner_(runner), choice_(std::move(choice)), pictures_(std::move(pictures)) {}

void CadPlay::Run() {
    PictureOfWindow(QStringLiteral("cad"));
    ChooseSymbol();
    ReopenAndMeasure();
    ReturnDistance();
}

void CadPlay::ChooseSymbol() {
    runner_.SetHands([this](VelmoRun& run) {
        OpenEntry(run);
        run.Click(QStringLiteral("Vedt_FlexGrid"), Item::Named(choice_.firstSize));
        run.SavePicture({}, Picture(QStringLiteral("variables")));
        run.Click(QStringLiteral("Vedt_OKBtn"));
    });
    Press("chooseSymbol");
    PictureOfWindow(QStringLiteral("drawn"));
}

void CadPlay::OpenEntry(VelmoRun& run) {
    const QString tree = QStringLiteral("VlmTreeView");
    run.WaitForWindow(QStringLiteral("VLM_MAIN"));
    for (qsizetype depth = 1; depth < choice_.category.size(); ++depth) {
        const Item item = Item::Path(choice_.category.first(depth));
        if (!run.Describe(tree, item)[QStringLiteral("expanded")].toBool())
            run.ClickBranch(tree, item);
    }
    run.Click(tree, Item::Path(choice_.category));
    run.SavePicture({}, Picture(QStringLiteral("category")));
    run.Click(QStringLiteral("VlmPdfList"), Item::Named(choice_.entry));
    run.SavePicture({}, Picture(QStringLiteral("entry")));
    run.ClickAction(QStringLiteral("Tbar_Open"));
    run.WaitForWindow(QStringLiteral("VLM_VEDT"));
}

void CadPlay::ReopenAndMeasure() {
    runner_.SetHands([this](VelmoRun& run) {
        run.WaitForWindow(QStringLiteral("VLM_VEDT"));
        run.Click(QStringLiteral("Vedt_FlexGrid"), Item::Named(choice_.secondSize));
        run.Click(QStringLiteral("Vedt_NowFGrid"), Item::Named(choice_.measured));
        run.SavePicture({}, Picture(QStringLiteral("before_measuring")));
        run.ClickAction(QStringLiteral("TB_POINT"));
    });
    Press("reopenSymbol");
    ClickDrawing(kMeasureFrom);
    ClickDrawing(kMeasureTo);
    PictureOfWindow(QStringLiteral("measured"));
    const auto* distance = window_.findChild<QDoubleSpinBox*>(QStringLiteral("measuredDistance"));
    Expect(QStringLiteral("the measured distance"), QString::number(distance->value()), kMeasuredDistance);
}

void CadPlay::ReturnDistance() {
    runner_.SetHands([this](VelmoRun& run) {
        run.WaitForWindow(QStringLiteral("VLM_VEDT"));
        run.SavePicture({}, Picture(QStringLiteral("after_measuring")));
        run.Click(QStringLiteral("Vedt_OKBtn"));
    });
    Press("returnDistance");
    PictureOfWindow(QStringLiteral("drawn_again"));
    Expect(choice_.measured, AnsweredValue(choice_.measured), kMeasuredDistance);
}

void CadPlay::Press(const char* button) {
    auto* control = window_.findChild<QPushButton*>(QString::fromLatin1(button));
    if (!control->isVisible() || !control->isEnabled())
        throw HarnessError(QStringLiteral("the button %1 cannot be pressed").arg(control->text()));
    QTest::mouseClick(control, Qt::LeftButton);
    if (!runner_.Error().isEmpty())
        throw HarnessError(runner_.Error());
}

void CadPlay::ClickDrawing(QPointF point) {
    auto* view = window_.findChild<DrawingView*>(QStringLiteral("drawing"));
    const QPoint pixel = view->ToWidget(point).toPoint();
    if (!view->rect().contains(pixel))
        throw HarnessError(
            QStringLiteral("the drawing does not show (%1, %2)").arg(point.x()).arg(point.y()));
    QTest::mouseMove(view, pixel);
    QTest::mouseClick(view, Qt::LeftButton, {}, pixel);
}

QString CadPlay::AnsweredValue(const QString& label) {
    const auto* table = window_.findChild<QTableWidget*>(QStringLiteral("answerVariables"));
    for (int row = 0; row < table->rowCount(); ++row) {
        if (table->item(row, 0)->text() == label)
            return table->item(row, 1)->text();
    }
    throw HarnessError(QStringLiteral("no answer for ") + label);
}

void CadPlay::Expect(const QString& what, const QString& actual, const QString& wanted) {
    if (actual != wanted)
        throw HarnessError(QStringLiteral("%1 is %2, not %3").arg(what, actual, wanted));
}

void CadPlay::PictureOfWindow(const QString& name) {
    // Lets the window lay out what has just appeared or gone.
    QCoreApplication::processEvents();
    window_.grab().save(Picture(name));
}

QString CadPlay::Picture(const QString& name) {
    return QStringLiteral("%1/%2_%3.png")
        .arg(pictures_)
        .arg(++pictureCount_, 2, 10, QLatin1Char('0'))
        .arg(name);
}

} // namespace velmo
