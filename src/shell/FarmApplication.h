// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

#include <QApplication>

#include <functional>

/// The application object, and the last net: window and screens show the errors of their own handlers; one that escapes them all
/// ends at the event that raised it, and the program goes on. A letter typed with Alt reaches no widget; shortcuts have had it
/// before.
class FarmApplication : public QApplication
{
    Q_OBJECT
public:
    FarmApplication(int &argc, char **argv);

    /// Without a handler errors pass through to the caller of exec().
    void setErrorHandler(std::function<void(const basic::RunTimeError &)> handler) { handler_ = std::move(handler); }
    bool notify(QObject *receiver, QEvent *event) override;

private:
    std::function<void(const basic::RunTimeError &)> handler_;
};

/// What the box of an untaken error says: number and description.
QString errorText(const basic::RunTimeError &error);
