#include "desktop/services/desktop_printer.h"
#include "platform/program_start.h"
#include "tests/support/failure_of.h"
#include "tests/support/places.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>

namespace tarvik::test {
namespace {

namespace fs = std::filesystem;

/// A print scheduler of the test's own, with queues that print into files.
class PrinterTest : public testing::Test {
protected:
    void SetUp() override
    {
        start_program(0, nullptr); // as every program: what is written to a process that has ended fails
        const auto scheduler = QStandardPaths::findExecutable("cupsd", {"/usr/sbin", "/usr/bin"});
        if (scheduler.isEmpty() || !fs::exists(office.settings().plugin))
            GTEST_SKIP() << "no CUPS, or no LibreOffice here";
        const auto at = [this](const char* name) { return (folder.path() / name).string(); };
        folder.write("cupsd.conf", "Listen " + at("socket") +
                                       "\nBrowsing No\nDefaultAuthType None\n<Location />\nAllow all\n</Location>\n"
                                       "<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n");
        folder.write("cups-files.conf", "FileDevice Yes\nServerRoot " + at("root") + "\nRequestRoot " + at("spool") +
                                            "\nCacheDir " + at("cache") + "\nStateDir " + at("state") + "\nTempDir " +
                                            at("spool") + "\nAccessLog " + at("access") + "\nErrorLog " + at("errors") +
                                            "\nPageLog " + at("pages") + "\n");
        for (const auto* name : {"root", "spool", "cache", "state"}) fs::create_directory(folder.path() / name);
        cups.start(scheduler, {"-f", "-c", at("cupsd.conf").c_str(), "-s", at("cups-files.conf").c_str()});
        qputenv("CUPS_SERVER", at("socket").c_str());
        while (cups.state() != QProcess::NotRunning && !fs::exists(at("socket"))) cups.waitForFinished(20);
        folder.write("t.txt", "text");
    }

    void TearDown() override
    {
        cups.kill();
        cups.waitForFinished();
        qunsetenv("CUPS_SERVER");
    }

    /// A queue that prints into nothing and is the default one.
    static void make_queue(const QString& name)
    {
        QProcess::execute("lpadmin", {"-p", name, "-E", "-v", "file:///dev/null"});
        QProcess::execute("lpadmin", {"-d", name});
    }

    /// What the queues took, printed or not yet.
    static std::string jobs()
    {
        QProcess query;
        query.start("lpstat", {"-W", "all", "-o"});
        query.waitForFinished();
        std::string names;
        for (const auto& line : query.readAllStandardOutput().split('\n'))
            names += line.left(line.indexOf(' ')).toStdString() + ' ';
        return names;
    }

    std::string print()
    {
        DesktopPrinter printer(office);
        return failure_of([&] { printer.print(folder.path() / "t.txt", U"单.txt"); });
    }

    TemporaryFolder folder;
    QProcess cups;
    libreoffice::LibreOffice office{{.plugin = fs::path(built_installation()) / libreoffice::plugin_file}};
};

TEST_F(PrinterTest, a_job_that_the_queue_does_not_take_is_reported)
{
    make_queue("paper");
    QProcess::execute("cupsreject", {"paper"});
    EXPECT_EQ(print(), " 请注意：\r\n文件 单.txt 没有打印：打印机“paper”没有接受它，请检查打印机。");
    EXPECT_EQ(jobs().find("paper"), std::string::npos) << jobs();
    QProcess::execute("cupsaccept", {"paper"});
    EXPECT_EQ(print(), "no failure");
    EXPECT_NE(jobs().find("paper-"), std::string::npos) << jobs();
}

TEST_F(PrinterTest, a_queue_that_is_newer_than_the_process_is_found)
{
    make_queue("old");
    const auto held = office.open(folder.path() / "t.txt");
    ASSERT_TRUE(held);
    make_queue("new");
    EXPECT_EQ(print(), "no failure");
    EXPECT_NE(jobs().find("new-"), std::string::npos) << jobs();
    EXPECT_TRUE(office.process_group()) << "the open file's process must live";
}

TEST(DesktopPrinter, without_a_queue_nothing_is_printed)
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "");
    libreoffice::LibreOffice office;
    EXPECT_EQ(failure_of([&] { DesktopPrinter(office).print("/tmp/a.xlsx", U"甲.xlsx"); }),
              " 请注意：\r\n文件 甲.xlsx 没有打印：没有找到默认打印机。");
    qputenv("PATH", path);
}

} // namespace
} // namespace tarvik::test
