#pragma once

#include <QMap>
#include <QStringList>

namespace velmo {

// The files below some folders as they are at one moment.
class SessionFiles {
public:
    explicit SessionFiles(const QStringList& folders);

    QStringList Names() const { return files_.keys(); }
    // Those that others do not have.
    QStringList NamesBeside(const SessionFiles& others) const;
    // Of databases, but for the work database of a run.
    QStringList Journals() const;
    // Puts these files back as they were and removes the others of these names. What none of the two knows
    // stays.
    void PutBack(const SessionFiles& others) const;
    // The same, and removes whatever else there is.
    void PutBackAlone() const;

    // What is wrong with these files when each must be as it was before or as it is after a change: text
    // files whole; of the settings each value, and all that is not the program's byte for byte; of databases
    // every row, in a sound file. The work database of a run may hold anything.
    QStringList Complaints(const SessionFiles& before, const SessionFiles& after) const;

private:
    QString ContentOf(const QString& name) const;

    QStringList folders_;
    QMap<QString, QByteArray> files_;
};

} // namespace velmo
