// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstdint>
#include <exception>
#include <optional>

namespace jet
{

/// What is wrong with some bytes of a file. It never leaves the module: Database adds the names of file and table and raises an
/// Error.
class Fault : public std::exception
{
public:
    explicit Fault(QString description);

    /// Adds a location unless a lower layer already has.
    void locate(std::uint32_t page, std::optional<std::uint32_t> slot = std::nullopt);
    /// "page 37, row 4: the row ends outside its page", rows counted from 1.
    QString sentence() const;
    const char *what() const noexcept override { return "damaged bytes in a Jet file"; }

private:
    QString description_;
    std::optional<std::uint32_t> page_;
    std::optional<std::uint32_t> slot_;
};

/// Runs `body`; a Fault that it raises is given the location.
template <typename Body> auto locating(std::uint32_t page, std::optional<std::uint32_t> slot, Body &&body)
{
    try {
        return body();
    } catch (Fault &fault) {
        fault.locate(page, slot);
        throw;
    }
}

/// For Bytes, out of line so that a checked read stays small.
[[noreturn]] void failOutOfBounds();

} // namespace jet
