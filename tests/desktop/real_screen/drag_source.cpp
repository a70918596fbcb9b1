#include <QApplication>
#include <QDrag>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

namespace {

/// Another program's window, out of which a file can be dragged.
class DragSource final : public QLabel {
public:
    explicit DragSource(const QString& file) : QLabel("drag"), url_(QUrl::fromLocalFile(file))
    {
        setWindowTitle("drag source");
        setGeometry(40, 40, 200, 120);
    }

protected:
    void mousePressEvent(QMouseEvent*) override
    {
        auto* offered = new QMimeData;
        offered->setUrls({url_});
        QDrag drag(this);
        drag.setMimeData(offered);
        drag.exec(Qt::CopyAction);
    }

private:
    QUrl url_;
};

} // namespace

int main(int count, char** words)
{
    const QApplication application(count, words);
    DragSource source(QFileInfo(QCoreApplication::arguments().at(1)).absoluteFilePath());
    source.show();
    return QApplication::exec();
}
