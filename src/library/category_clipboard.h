#pragma once

#include "startup/global_state.h"

namespace velmo {

// The category that was cut or copied last, until it is pasted somewhere else in the tree.
class CategoryClipboard {
public:
    void Copy(const GlobalState& state);
    void Cut(const GlobalState& state);

    // The question that is to be asked before Paste where the tree could not lead to what was cut any more;
    // empty where there is nothing to ask.
    QString QuestionBeforePaste(const GlobalState& state) const;
    // Puts the remembered category under CurFolderID. What was cut moves with everything below it; otherwise
    // a row of the same name and slide is added, and the entries of the remembered category are doubled
    // where they are. Throws what the library throws; nothing is changed and the category is still
    // remembered then.
    void Paste(const GlobalState& state);

    // Something was remembered once.
    bool HasFolder() const { return ClipFolderID_ != 0; }

private:
    // 0 nothing or pasted already, 1 cut, 2 copied.
    std::int16_t ClipKind_ = 0;
    std::int16_t ClipFolderID_ = 0;
};

} // namespace velmo
