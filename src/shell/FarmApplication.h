// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/basic/RunTimeError.h"

#include <QApplication>

#include <functional>

/// The application object, and the last handler of errors: an error that neither window nor screen handled is shown, and the
/// program continues with the next event. A character typed with Alt reaches no widget, since shortcuts were tried before.
class FarmApplication : public QApplication
{
    Q_OBJECT
public:
    FarmApplication(int &argc, char **argv);

    /// Without a handler errors propagate to the caller of exec().
    void setErrorHandler(std::function<void(const basic::RunTimeError &)> handler) { handler_ = std::move(handler); }
    bool notify(QObject *receiver, QEvent *event) override;

private:
    std::function<void(const basic::RunTimeError &)> handler_;
};

/// Text of the box for an unhandled error: number and description.
QString errorText(const basic::RunTimeError &error);
