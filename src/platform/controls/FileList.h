// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>

namespace controls
{

/// The names of the files in a folder, in alphabetical order. A folder that is not there shows as empty.
class FileList : public QListWidget
{
    Q_OBJECT
public:
    explicit FileList(QWidget *parent = nullptr);

    QString Path() const { return path_; }
    /// Shows the files that lie in the folder now; also when it is the folder that was shown already. Silent.
    void setPath(const QString &folder);
    int ListCount() const { return count(); }
    /// What stands in the middle while there is no file.
    void setEmptyText(const QString &text);

Q_SIGNALS:
    /// A file was clicked, once also when it was double clicked, or Enter or Space was pressed on it.
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
