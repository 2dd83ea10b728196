#pragma once

#include <QString>

#include <vector>

namespace velmo {

// The fields of an entry that name files.
inline const QString PdfField = QStringLiteral("PDFFileName");
inline const QString SlideField = QStringLiteral("SLDFileName");

// A file, as a field of entries names it, that gets another name. Names are relative to the library's root.
struct NameChange {
    QString field;
    QString oldName;
    QString newName;
};

// What a move of files has under way, written beside the library before the first file disappears, until the
// library holds the new names. Whoever reads, writes or removes it holds the library's write transaction, so
// that programs do not take each other's note.
class MoveNote {
public:
    // library: the stored path of the database.
    explicit MoveNote(const QString& library);

    bool Exists() const;
    // Throws 75 when the note cannot be read or understood.
    std::vector<NameChange> Read();
    // The note is on the disk. Throws as ReplaceFile does.
    void Write(const std::vector<NameChange>& changes);
    // Removes the note, unless it is another than the one that was read or written here last.
    void Remove() const;

private:
    QByteArray Bytes() const;

    QString stored_;
    // The operating system's name, known without a look into the folder.
    QString path_;
    QByteArray known_;
};

} // namespace velmo
