// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace basic
{

/// The classic run-time error numbers that this program raises itself.
enum class ErrorNumber : int {
    InvalidArgument = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    DeviceError = 57,
    DiskFull = 61,
    InputPastEnd = 62,
    PermissionDenied = 70,
    PathFileAccess = 75,
    ObjectNotSet = 91,
};

/// Every failure of the platform modules: a number that handlers may test and a sentence for people.
class RunTimeError : public std::exception
{
public:
    RunTimeError(int number, QString description);
    RunTimeError(ErrorNumber number, QString description);

    int number() const noexcept { return number_; }
    const QString &description() const noexcept { return description_; }
    const char *what() const noexcept override { return what_.constData(); }

private:
    int number_;
    QString description_;
    QByteArray what_;
};

/// Runs `body` and swallows a RunTimeError, nothing else.
/// Returns whether the body ran to its end.
template <typename Body> bool runOrIgnore(Body &&body)
{
    try {
        body();
        return true;
    } catch (const RunTimeError &) {
        return false;
    }
}

/// Runs `body`; its error of that number goes on with `description`, any other as it is.
template <typename Body> auto describing(ErrorNumber number, const QString &description, Body &&body)
{
    try {
        return body();
    } catch (const RunTimeError &error) {
        if (error.number() != static_cast<int>(number)) {
            throw;
        }
        throw RunTimeError(number, description);
    }
}

} // namespace basic
