// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Shortcuts.h"
#include "fakes/QueuedDialogs.h"
#include "menu/MenuEntries.h"
#include "screens/ChildScreen.h"
#include "screens/ShortcutsPage.h"
#include "shell/FarmApplication.h"
#include "shell/MDI_Monitoring.h"
#include "support/TemporaryFarm.h"

#include <QAbstractButton>
#include <QLabel>
#include <QRegularExpression>
#include <QSet>
#include <QShortcut>
#include <QTest>

/// The page of keys lists the keys of the screens, and opens everywhere.
class ShortcutsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theTableHasTheLettersOfTheScreen_data();
    void theTableHasTheLettersOfTheScreen();
    void everyButtonsTipNamesItsKey_data() { screens(); }
    void everyButtonsTipNamesItsKey();
    void theBarsLettersAreFreeOnEveryScreen_data() { screens(); }
    void theBarsLettersAreFreeOnEveryScreen();
    void thePageBeginsWithTheScreen();
    void aScreenHasTheFocusAtOnce_data() { screens(); }
    void aScreenHasTheFocusAtOnce();

private:
    static void screens();
    /// Alt shortcuts of all buttons and captions below a widget.
    static QSet<QString> letters(const QWidget &widget);
    static QSet<QString> lettersInTable(const QStringList &owners);
    QWidget &open(const QString &picture);

    std::unique_ptr<TemporaryFarm> farm_;
    std::unique_ptr<QueuedDialogs> dialogs_;
    std::unique_ptr<MDI_Monitoring> window_;
};

void ShortcutsTest::init()
{
    farm_ = std::make_unique<TemporaryFarm>();
    farm_->addFarm(QStringLiteral("Riverbend"));
    farm_->close();
    dialogs_ = std::make_unique<QueuedDialogs>();
    window_ = std::make_unique<MDI_Monitoring>(*dialogs_, menuEntries());
    QCOMPARE(window_->load(farm_->appPath()), MDI_Monitoring::Load::Done);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void ShortcutsTest::cleanup()
{
    window_.reset();
}

void ShortcutsTest::screens()
{
    QTest::addColumn<QString>("picture");
    for (const char *picture : {"imSpray", "ImPM", "imFF", "imLeave", "imBas", "imGG"}) {
        QTest::newRow(picture) << QString::fromLatin1(picture);
    }
}

QWidget &ShortcutsTest::open(const QString &picture)
{
    if (picture.isEmpty()) {
        return *window_;
    }
    window_->findChild<QAbstractButton *>(picture)->click();
    return *window_->CurrentForm();
}

QSet<QString> ShortcutsTest::letters(const QWidget &widget)
{
    QSet<QString> found;
    const auto add = [&found](const QKeySequence &key) {
        if (key.toString().startsWith(QLatin1String("Alt+"))) {
            found.insert(key.toString());
        }
    };
    for (const QAbstractButton *button : widget.findChildren<QAbstractButton *>()) {
        add(button->shortcut());
    }
    for (const QShortcut *shortcut : widget.findChildren<QShortcut *>()) {
        add(shortcut->key());
    }
    for (const QLabel *label : widget.findChildren<QLabel *>()) {
        if (label->buddy()) {
            add(QKeySequence::mnemonic(label->text()));
        }
    }
    return found;
}

QSet<QString> ShortcutsTest::lettersInTable(const QStringList &owners)
{
    static const QRegularExpression withAlt(QStringLiteral("Alt\\+[A-Z]\\b"));
    QSet<QString> found;
    for (const KeyGroup &group : keyGroups()) {
        for (const KeyLine &line : group.lines) {
            const auto match = withAlt.match(line.keys);
            if (owners.contains(group.owner) && match.hasMatch()) {
                found.insert(match.captured());
            }
        }
    }
    return found;
}

void ShortcutsTest::theTableHasTheLettersOfTheScreen_data()
{
    QTest::addColumn<QStringList>("owners");
    QTest::addColumn<QStringList>("pictures");
    const auto row = [](const char *name, const QStringList &owners, const QStringList &pictures) {
        QTest::newRow(name) << owners << pictures;
    };
    row("bar and menu", {QStringLiteral("MDI_Monitoring"), QStringLiteral("MenuPanel")}, {QString()});
    row("pest monitoring", {QStringLiteral("frmPestMon2")}, {QStringLiteral("imSpray")});
    row("records", {QStringLiteral("frmRepPestInfo")}, {QStringLiteral("ImPM")});
    row("stored sheets", {QStringLiteral("frmRepPestMon")}, {QStringLiteral("imFF")});
    // The kinds of analysis have letters of their own.
    row("analyses", {QStringLiteral("frmMonLeave")}, {QStringLiteral("imLeave"), QStringLiteral("imBas")});
}

void ShortcutsTest::theTableHasTheLettersOfTheScreen()
{
    QFETCH(QStringList, owners);
    QFETCH(QStringList, pictures);
    QSet<QString> found;
    for (const QString &picture : pictures) {
        found.unite(letters(open(picture)));
        window_->findChild<QAbstractButton *>(QStringLiteral("CommandButton1"))->click();
    }
    QStringList real = found.values();
    QStringList listed = lettersInTable(owners).values();
    real.sort();
    listed.sort();
    QCOMPARE(listed, real);
}

void ShortcutsTest::everyButtonsTipNamesItsKey()
{
    QFETCH(QString, picture);
    for (const QAbstractButton *button : open(picture).findChildren<QAbstractButton *>()) {
        const QString key = button->shortcut().toString(QKeySequence::NativeText);
        QVERIFY2(button->toolTip().contains(key), qPrintable(button->objectName()));
    }
}

void ShortcutsTest::theBarsLettersAreFreeOnEveryScreen()
{
    QFETCH(QString, picture);
    const auto bar = lettersInTable({QStringLiteral("MDI_Monitoring")});
    QVERIFY(!letters(open(picture)).intersects(bar));
}

void ShortcutsTest::thePageBeginsWithTheScreen()
{
    for (const QString &picture : {QString(), QStringLiteral("imLeave")}) {
        open(picture);
        QTest::keyClick(window_.get(), Qt::Key_F1);
        const auto *page = window_->findChild<ShortcutsPage *>();
        QVERIFY(page != nullptr);
        QVERIFY2(page->text().startsWith(picture.isEmpty() ? u"Menu" : u"Analyses"), qPrintable(page->text().left(40)));
        QVERIFY(page->text().contains(QLatin1String("Alt+X")));
        QTest::keyClick(window_->findChild<ShortcutsPage *>(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(window_->findChild<ShortcutsPage *>() == nullptr);
    }
}

void ShortcutsTest::aScreenHasTheFocusAtOnce()
{
    QFETCH(QString, picture);
    const QWidget &screen = open(picture);
    const QWidget *first = QApplication::focusWidget();
    QVERIFY2(first != &screen && screen.isAncestorOf(first), "a control of the screen has the focus");
}

int main(int argc, char **argv)
{
    FarmApplication application(argc, argv);
    ShortcutsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "ShortcutsTest.moc"
