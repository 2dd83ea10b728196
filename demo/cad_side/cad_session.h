#pragma once

#include "cad_side/cad_answer.h"

#include <QStringList>

#include <optional>

namespace velmo {

// What the CAD side can ask for (VlmMode).
enum class CadRunMode {
    Choose = 2,
    EditTables = 3,
    ReturnDistance = 4,
};

struct CadRequest {
    CadRunMode mode = CadRunMode::Choose;
    // Opens the symbol of the previous answer again (VlmNxt = 1).
    bool reopens = false;
    // Millimetres measured in the drawing (VlmDist); 0 when nothing was measured.
    std::optional<double> distance;
};

// The folders of a demonstration, apart from everything of the user's: a settings store, an exchange folder
// and a library home of its own.
class CadSession {
public:
    // Makes the folder (native path) with config, exchange and home. home becomes a copy of libraryHome
    // unless it is there from an earlier session. Throws 75 or 76 when that fails.
    CadSession(const QString& folder, const QString& libraryHome);

    // Native paths.
    const QString& Folder() const { return folder_; }
    QString ConfigFolder() const { return folder_ + QStringLiteral("/config"); }
    QString ExchangeFolder() const { return folder_ + QStringLiteral("/exchange"); }
    QString Home() const { return folder_ + QStringLiteral("/home"); }
    QString SettingsFile() const { return ConfigFolder() + QStringLiteral("/Kestova2019/Velmo2.ini"); }

    // Stores the request and returns the lines "Key=value" that it wrote. Throws 75 when that fails.
    QStringList WriteRequest(const CadRequest& request) const;

    // The program has ended because the user wants a distance from the drawing (VlmMode is 4).
    bool IsMeasurementAsked() const;
    // The 1-based variable row that gets the distance; 0 when none is stored.
    int MeasuredRow() const;

    // Throws as ReadCadAnswer does.
    CadAnswer ReadAnswer() const { return ReadCadAnswer(ExchangeFolder() + u'/'); }
    // Whether velmo.ret2 was written since MarkAnswerOld, even with the same text. A closed window writes
    // none.
    bool IsAnswerNew() const;
    // Throws 70 when the old answer cannot be marked.
    void MarkAnswerOld() const;

private:
    QString ChoiceFile() const { return ExchangeFolder() + QStringLiteral("/velmo.ret2"); }

    QString folder_;
};

} // namespace velmo
