// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/grid/CellEditor.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>

namespace
{

/// Takes keys down as "+a" and "-a", and ends itself on the press of "q".
class KeyNotes : public QWidget
{
public:
    KeyNotes(QStringList &notes, QWidget *parent) : QWidget(parent), notes_(notes) {}

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        notes_.append(u'+' + event->text());
        if (event->text() == u"q") {
            delete this;
        }
    }
    void keyReleaseEvent(QKeyEvent *event) override { notes_.append(u'-' + event->text()); }

private:
    QStringList &notes_;
};

} // namespace

class CellEditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void keysEndWithWhatTheyWereSentTo_data();
    void keysEndWithWhatTheyWereSentTo();
};

void CellEditorTest::keysEndWithWhatTheyWereSentTo_data()
{
    QTest::addColumn<bool>("wait");
    QTest::newRow("at once") << true;
    QTest::newRow("queued") << false;
}

void CellEditorTest::keysEndWithWhatTheyWereSentTo()
{
    QFETCH(bool, wait);
    QWidget window;
    QStringList notes;
    auto *box = new KeyNotes(notes, &window);
    window.show();
    QApplication::setActiveWindow(&window);
    box->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), box);
    Send_Keys(QStringLiteral("aqb"), wait);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(notes, (QStringList{"+a", "-a", "+q"}));
}

QTEST_MAIN(CellEditorTest)
#include "CellEditorTest.moc"
