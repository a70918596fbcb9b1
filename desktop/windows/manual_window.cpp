#include "desktop/windows/manual_window.h"

#include <QFile>
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>
#include <QTextBlock>
#include <QTextTable>

namespace tarvik {

namespace {

// One line between the cells, and room around their texts.
QTextTableFormat table_look(const QTextTable& table)
{
    QTextTableFormat look = table.format();
    look.setBorderCollapse(true);
    look.setBorder(1);
    look.setBorderBrush(QColor(186, 168, 112));
    look.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    look.setCellPadding(4);
    look.setTopMargin(6);
    look.setBottomMargin(10);
    return look;
}

} // namespace

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
        constexpr int title_bar = 36, border = 8;
        const QRect free = screen()->availableGeometry();
        resize(QSize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 36)
                   .boundedTo(free.size() - QSize(2 * border, title_bar + border)));
        move(free.right() - border - width(), free.top() + (free.height() - title_bar - height()) / 2);
        if (file.open(QIODevice::ReadOnly)) document()->setMarkdown(QString::fromUtf8(file.readAll()));
        document()->setDocumentMargin(fontMetrics().height());
        for (QTextFrame* frame : document()->rootFrame()->childFrames())
            if (auto* table = dynamic_cast<QTextTable*>(frame)) table->setFormat(table_look(*table));
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

QVariant ManualWindow::loadResource(int type, const QUrl& name)
{
    // Both margins, and the scroll bar.
    const int edge = 2 * fontMetrics().height() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth();
    QVariant resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) return resource;
    const QImage picture = QImage::fromData(resource.toByteArray());
    const int room = width() - edge;
    return picture.width() > room ? picture.scaledToWidth(room, Qt::SmoothTransformation) : picture;
}

void ManualWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F1) close();
    else QTextBrowser::keyPressEvent(event);
}

} // namespace tarvik
