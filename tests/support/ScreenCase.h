// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FakeScreenHost.h"
#include "platform/basic/Clock.h"
#include "platform/controls/ItemCombo.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <memory>

/// A screen on its own farm, with the clock stopped at ten o'clock, and helpers to drive it. Base of the tests of screens.
template <typename Farm, typename Screen> class ScreenCase : public QObject
{
protected:
    void start(QDate today)
    {
        basic::Clock::stopAt(QDateTime(today, QTime(10, 0)));
        farm_ = std::make_unique<Farm>();
        host_ = std::make_unique<FakeScreenHost>(farm_->session);
    }

    void showScreen(const QString &tag = {})
    {
        screen_ = std::make_unique<Screen>(*host_);
        screen_->setTag(tag);
        screen_->resize(1366, 700);
        screen_->show();
        screen_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(screen_.get()));
        screen_->activateScreen();
    }

    /// Fails on errors that the test did not expect, and on missing or additional boxes.
    void end()
    {
        QVERIFY2(host_->errors.isEmpty(), qPrintable(host_->errors.join(u' ')));
        QVERIFY(host_->dialogs().allAsExpected());
        screen_.reset();
        host_.reset();
        farm_.reset();
        basic::Clock::stopAt({});
    }

    template <typename Control> Control &find(const char *name)
    {
        auto *control = screen_->template findChild<Control *>(QLatin1String(name));
        Q_ASSERT(control);
        return *control;
    }
    void click(const char *name) { find<QAbstractButton>(name).click(); }
    void choose(const char *name, const QString &text)
    {
        auto &combo = find<controls::ItemCombo>(name);
        combo.setListIndex(combo.findText(text));
    }

    /// The fields that Tab reaches, in order, from the given one until one repeats.
    QString tabOrder(const char *first)
    {
        QStringList names;
        constexpr int maxTabs = 100;
        find<QWidget>(first).setFocus(Qt::TabFocusReason);
        for (int tabs = 0; tabs < maxTabs; ++tabs) {
            const QString name = QApplication::focusWidget()->objectName();
            if (names.contains(name)) {
                break;
            }
            names.append(name);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        return names.join(u' ');
    }

    std::unique_ptr<Farm> farm_;
    std::unique_ptr<FakeScreenHost> host_;
    std::unique_ptr<Screen> screen_;
};
