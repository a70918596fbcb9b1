#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>

// Another program that has copied: it offers the text of a file until it is ended.
int main(int count, char** words)
{
    const QGuiApplication application(count, words);
    QFile file(count > 1 ? words[1] : "");
    if (!file.open(QIODevice::ReadOnly)) return 1;
    auto* const offered = new QMimeData;
    offered->setData("text/plain", file.readAll());
    QGuiApplication::clipboard()->setMimeData(offered);
    return QGuiApplication::exec();
}
