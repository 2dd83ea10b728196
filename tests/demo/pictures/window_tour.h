#pragma once

#include "acceptance/velmo_run.h"
#include "acceptance/velmo_session.h"

#include <functional>

namespace velmo {

// How a picture is taken.
struct PictureStyle {
    // Screen pixels for a logical one.
    QString scale;
    bool dark = false;
    // Points; empty for the desktop's own.
    QString fontSize;
};

// Goes through all windows of the program with the demonstration's library and keeps a picture of each.
class WindowTour {
public:
    WindowTour(QString program, QString pluginFolder, QString home, PictureStyle style, QString pictures);

    // Throws HarnessError when a window is not what it should be.
    void Run();

private:
    void Start(const char* mode, const std::function<void(VelmoRun&)>& hands);
    void ShowBrowser(VelmoRun& run);
    void ShowEntryEditor(VelmoRun& run);
    void ShowMoveTool(VelmoRun& run);
    void ShowSearch(VelmoRun& run);
    void ShowVariables(VelmoRun& run);
    void ShowTableEditor(VelmoRun& run);
    void ChooseCategory(VelmoRun& run, const QStringList& path);
    void Picture(VelmoRun& run, const QString& name, const QString& control = {});

    QString program_;
    QString pluginFolder_;
    PictureStyle style_;
    QString pictures_;
    VelmoSession session_;
};

} // namespace velmo
