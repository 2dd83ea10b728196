#pragma once

#include <QString>

#include <stdexcept>

namespace velmo::driver {

// A command that cannot be carried out; the text goes back to the test.
class DriverError : public std::runtime_error {
public:
    explicit DriverError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

} // namespace velmo::driver
