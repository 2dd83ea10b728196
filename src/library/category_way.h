#pragma once

#include "platform/database.h"

#include <QSet>

#include <cstdint>
#include <optional>

namespace velmo {

// A category and those above it, by their IDs; nothing when they lead to no root, so that the tree cannot
// show it: it is gone, or hangs below itself.
std::optional<QSet<std::int16_t>> WayToRoot(Database& library, std::int16_t id);

// The question before a category is moved into itself or below itself.
QString QuestionBeforeLoss(const QString& category);

} // namespace velmo
