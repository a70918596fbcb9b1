#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/damage.h"
#include "platform/failure.h"
#include "platform/files/disk_file.h"
#include "platform/platform.h"

#include <string>
#include <system_error>

namespace tarvik {

/// The name of the system's default printer, or nothing.
std::string default_printer();

/// The default printer of the system, to which the suite prints. A missing printer, or nothing that could print the
/// file, is a Failure. `office` must outlive the printer.
class DesktopPrinter final : public Printer {
public:
    explicit DesktopPrinter(libreoffice::LibreOffice& office) : office_(office) {}
    // A suite may print into nothing, and say nothing, where there is no queue: so the queue is looked up first. One
    // that was set up later than the suite started is known to the next process only; the running one may hold files
    // open.
    void print(const std::filesystem::path& file, TextView name) override
    {
        const auto printer = default_printer();
        if (printer.empty()) throw print_failure(name, U"没有找到默认打印机。");
        try {
            auto printing = print_by(office_, file, printer);
            if (printing == Printing::PrinterUnknown) {
                office_.end_if_idle();
                libreoffice::LibreOffice later(office_.settings());
                printing = print_by(later, file, printer);
            }
            if (printing == Printing::Done) return;
            const auto queue = U"打印机“" + from_utf8(printer) + U"”";
            throw print_failure(name, printing == Printing::JobRefused
                                          ? queue + U"没有接受它，请检查打印机。"
                                          : libreoffice::suite_title() + U" 不认识" + queue + U"。");
        } catch (const ooxml::Damage& damage) {
            throw print_failure(name, damage.message());
        } catch (const std::system_error& error) {
            throw print_failure(name, reason_of(error) + U"。");
        }
    }

private:
    using Printing = libreoffice::Printing;
    static Failure print_failure(TextView name, TextView reason)
    {
        return Failure(U" 请注意：\r\n文件 " + name + U" 没有打印：" + reason);
    }
    static Printing print_by(libreoffice::LibreOffice& office, const std::filesystem::path& file,
                             const std::string& printer)
    {
        const libreoffice::ExchangeFolder folder(office.folder());
        auto opened = office.open(folder.put(file.filename(), read_file(file)));
        if (!opened) throw ooxml::Damage(libreoffice::suite_title() + U" 不能打开它。");
        return opened.call([&](libreoffice::OpenFile& held) { return held.print(printer); });
    }

    libreoffice::LibreOffice& office_;
};

} // namespace tarvik
