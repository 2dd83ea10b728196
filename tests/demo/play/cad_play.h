#pragma once

#include "cad_side/cad_window.h"
#include "played_runner.h"

namespace velmo {

// What the play chooses in the library.
struct PlayChoice {
    // From the tree's top.
    QStringList category;
    QString entry;
    // Rows of the dimension table by their first column, for the first and the second opening.
    QString firstSize;
    QString secondSize;
    // The variable that is measured, as the variable window labels it: "V5(L)".
    QString measured;
};

// Plays the whole talk between the CAD side and the program: choosing a symbol, opening it again, measuring a
// distance in the drawing. Keeps a picture of every stage.
class CadPlay {
public:
    // pictures: a folder that exists (native path).
    CadPlay(CadWindow& window, PlayedRunner& runner, PlayChoice choice, QString pictures);

    // Throws HarnessError when anything does not go as a user would expect.
    void Run();

private:
    void ChooseSymbol();
    void ReopenAndMeasure();
    void ReturnDistance();

    void OpenEntry(VelmoRun& run);
    void Press(const char* button);
    void ClickDrawing(QPointF point);
    QString AnsweredValue(const QString& label);
    void Expect(const QString& what, const QString& actual, const QString& wanted);
    // The path of the next picture.
    QString Picture(const QString& name);
    void PictureOfWindow(const QString& name);

    CadWindow& window_;
    PlayedRunner& runner_;
    PlayChoice choice_;
    QString pictures_;
    int pictureCount_ = 0;
};

} // namespace velmo
