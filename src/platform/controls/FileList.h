// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>

namespace controls
{

/// The names of the files in a folder, in alphabetical order. A missing folder shows as empty.
class FileList : public QListWidget
{
    Q_OBJECT
public:
    explicit FileList(QWidget *parent = nullptr);

    QString Path() const { return path_; }
    /// Reads the folder again, even when the path is the same. Silent.
    void setPath(const QString &folder);
    int ListCount() const { return count(); }
    /// Shown in the middle while there are no files.
    void setEmptyText(const QString &text);

Q_SIGNALS:
    /// A file was clicked (once for a double click), or Enter or Space was pressed on it.
    void Click(const QString &fileName);

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString path_;
    QString emptyText_;
    bool secondClick_ = false;
};

} // namespace controls
