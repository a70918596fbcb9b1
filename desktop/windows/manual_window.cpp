#include "desktop/windows/manual_window.h"

#include <QFile>
#include <QKeyEvent>
#include <QTextBlock>

namespace tarvik {

ManualWindow::ManualWindow()
{
    setObjectName("manual");
    setWindowTitle("Tarvik 计算 使用手册");
    setOpenExternalLinks(true);
    setSearchPaths({":/manual"});
}

void ManualWindow::open_at(const QString& heading)
{
    if (document()->isEmpty()) {
        QFile file(":/manual/manual.md");
        if (file.open(QIODevice::ReadOnly)) document()->setMarkdown(QString::fromUtf8(file.readAll()));
        resize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 36);
    }
    show();
    raise();
    activateWindow();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || !block.text().contains(heading)) continue;
        moveCursor(QTextCursor::End); // so that the heading comes to the top and not to the bottom
        setTextCursor(QTextCursor(block));
        break;
    }
}

void ManualWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F1) close();
    else QTextBrowser::keyPressEvent(event);
}

} // namespace tarvik
