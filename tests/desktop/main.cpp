#include <gtest/gtest.h>

#include <QApplication>

#include <locale.h>

// The toolkit's font library keeps what it has read until the process ends.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that the sanitizer asks for.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:libQt6\nleak:libglib\n";
}

int main(int count, char** words)
{
    testing::InitGoogleTest(&count, words);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
