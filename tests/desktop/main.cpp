#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <locale.h>

// The toolkit's font library keeps what it has read until the process ends, LibreOffice's headers and libraries types.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that the sanitizer asks for.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:libQt6\nleak:libglib\n"
           "leak:libuno_sal.so\nleak:libuno_cppu.so\nleak:com::sun::star::uno::Type::operator new\n";
}

int main(int count, char** words)
{
    testing::InitGoogleTest(&count, words);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    const QTemporaryDir settings; // the user's own stay as they are
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
