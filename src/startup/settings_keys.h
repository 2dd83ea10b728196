#pragma once

#include <QString>

namespace velmo::settings_keys {

// Every key of the settings store that the program reads or writes.
inline const QString VlmNxt = QStringLiteral("VlmNxt");
inline const QString VlmHome = QStringLiteral("VlmHome");
inline const QString VlmMode = QStringLiteral("VlmMode");
inline const QString VlmTemp = QStringLiteral("VlmTemp");
inline const QString VlmDist = QStringLiteral("VlmDist");
inline const QString DistNo = QStringLiteral("DistNo");
inline const QString LastPDF = QStringLiteral("LastPDF");
inline const QString UsrLastPDF = QStringLiteral("UsrLastPDF");
inline const QString TBLLast = QStringLiteral("TBLLast");
inline const QString UsrTBLLast = QStringLiteral("UsrTBLLast");
inline const QString SmbTblOf = QStringLiteral("SmbTblOf");
inline const QString VlmTblOf = QStringLiteral("VlmTblOf");
inline const QString TreeLast = QStringLiteral("TreeLast");
inline const QString UsrTreeLast = QStringLiteral("UsrTreeLast");
inline const QString EdtTreeLast = QStringLiteral("EdtTreeLast");
inline const QString Tree2nd1st = QStringLiteral("Tree2nd1st");
inline const QString VlmMainLeft = QStringLiteral("VlmMainLeft");
inline const QString VlmMainTop = QStringLiteral("VlmMainTop");
inline const QString VlmMainWidth = QStringLiteral("VlmMainWidth");
inline const QString VlmMainHeight = QStringLiteral("VlmMainHeight");
// The rectangle of each of the browser's splitters: the name followed by Left, Top, Width and Height.
inline const QString FrameSplit = QStringLiteral("FrameSplit");
inline const QString TreeSplit = QStringLiteral("TreeSplit");
inline const QString PdfSplit = QStringLiteral("PdfSplit");
// The full path of each library's database, for the CAD side.
inline const QString VelmoDB = QStringLiteral("VelmoDB");
inline const QString UsrDB = QStringLiteral("UsrDB");

// The value of LastPDF and UsrLastPDF that no path equals.
inline const QString NoPath = QStringLiteral("\\\\\\\\\\");

// A library's keys for the symbol chosen last, its table row, and the current value of variable row n
// (1-based).
inline const QString& LastSymbol(bool userLibrary) {
    return userLibrary ? UsrLastPDF : LastPDF;
}
inline const QString& LastTableRow(bool userLibrary) {
    return userLibrary ? UsrTBLLast : TBLLast;
}
// The symbol that these values belong to; empty for none.
inline const QString& VariableValuesOf(bool userLibrary) {
    return userLibrary ? VlmTblOf : SmbTblOf;
}
inline QString VariableValue(bool userLibrary, int row) {
    return (userLibrary ? QStringLiteral("VlmTbl") : QStringLiteral("SmbTbl")) + QString::number(row);
}

} // namespace velmo::settings_keys
