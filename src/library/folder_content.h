#pragma once

#include "startup/global_state.h"

#include <vector>

namespace velmo {

// A subcategory or an entry of a category. The files of an entry are relative to the library's root; a
// subcategory has none here.
struct ContentRow {
    bool isFolder = false;
    std::int16_t id = 0;
    QString name;
    QString pdf;
    QString slide;
};

// What the category CurFolderID holds: first its subcategories, then its entries.
std::vector<ContentRow> FolderContent(const GlobalState& state);

// The question that is to be asked before what is selected of the listed rows is moved to a target where the
// tree could not lead to it; empty where there is nothing to ask.
QString QuestionBeforeMove(const GlobalState& state, const std::vector<ContentRow>& rows,
                           const std::vector<ContentRow>& selected, std::int16_t target);

// Moves what is selected of the listed rows to another category. Only numbers count: a selected subcategory 3
// takes the entry 3 with it. No target is refused.
void MoveToCategory(const GlobalState& state, const std::vector<ContentRow>& rows,
                    const std::vector<ContentRow>& selected, std::int16_t target);

} // namespace velmo
