// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <QTimer>
#include <QWidget>

/// A process that shows an empty window and ends once it has been painted.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(1366, 768);
    window.show();
    window.repaint();
    QTimer::singleShot(0, &application, &QApplication::quit);
    return QApplication::exec();
}
