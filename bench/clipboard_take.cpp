#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>

#include <cstdio>

// Another program that pastes: tells how many bytes it got from the clipboard and how many seconds that took.
int main(int count, char** words)
{
    const QGuiApplication application(count, words);
    QElapsedTimer time;
    time.start();
    const QMimeData* const offered = QGuiApplication::clipboard()->mimeData();
    const qsizetype bytes = offered ? offered->data("text/plain").size() : 0;
    std::printf("%lld %.3f\n", static_cast<long long>(bytes), static_cast<double>(time.elapsed()) / 1000);
}
