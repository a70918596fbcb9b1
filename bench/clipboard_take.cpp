#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <cstdio>

// Another program that pastes: tells how many bytes it got from the clipboard.
int main(int count, char** words)
{
    const QGuiApplication application(count, words);
    const QMimeData* const offered = QGuiApplication::clipboard()->mimeData();
    const qsizetype bytes = offered ? offered->data("text/plain").size() : 0;
    std::printf("%lld\n", static_cast<long long>(bytes));
}
