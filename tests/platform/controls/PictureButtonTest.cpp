// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/PictureButton.h"

#include <QSignalSpy>
#include <QTest>

using namespace controls;

/// Keys, and a picture without a screen.
class PictureButtonTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void enterAndSpaceClick();
};

void PictureButtonTest::enterAndSpaceClick()
{
    PictureButton picture;
    QSignalSpy clicks(&picture, &PictureButton::clicked);
    picture.show();
    QTest::keyClick(&picture, Qt::Key_Return);
    QTest::keyClick(&picture, Qt::Key_Space);
    QCOMPARE(clicks.size(), 2);
    picture.setUnavailable(QStringLiteral("Later"));
    QTest::mouseClick(&picture, Qt::LeftButton);
    QCOMPARE(clicks.size(), 2);
}

QTEST_MAIN(PictureButtonTest)
#include "PictureButtonTest.moc"
