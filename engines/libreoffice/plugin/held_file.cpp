#include "engines/libreoffice/plugin/held_file.h"

#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XPrintJobBroadcaster.hpp>
#include <com/sun/star/view/XPrintable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <osl/file.hxx>
#include <rtl/ref.hxx>

#include <atomic>

namespace tarvik::libreoffice {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

template <typename Value>
Value value_named(const Properties& list, const char* name)
{
    Value value{};
    for (const auto& one : list)
        if (one.Name.equalsAscii(name)) one.Value >>= value;
    return value;
}

/// What becomes of a print job; it is reported on a thread of the connection's.
class PrintJob final : public cppu::WeakImplHelper1<css::view::XPrintJobListener> {
public:
    void SAL_CALL printJobEvent(const css::view::PrintJobEvent& event) override
    {
        if (event.State == css::view::PrintableState_JOB_SPOOLED) is_spooled_ = true;
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*event*/) override {}

    bool is_spooled() const { return is_spooled_; }

private:
    std::atomic<bool> is_spooled_ = false;
};

} // namespace

rtl::OUString to_uno(const Text& text)
{
    static_assert(sizeof(char32_t) == sizeof(sal_uInt32));
    return rtl::OUString(reinterpret_cast<const sal_uInt32*>(text.data()), static_cast<sal_Int32>(text.size()));
}

rtl::OUString to_uno(const std::string& utf8)
{
    return {utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8};
}

std::string to_bytes(const rtl::OUString& text)
{
    const rtl::OString utf8 = text.toUtf8();
    return {utf8.getStr(), static_cast<std::size_t>(utf8.getLength())};
}

rtl::OUString file_url(const std::filesystem::path& path)
{
    rtl::OUString url;
    osl::FileBase::getFileURLFromSystemPath(to_uno(path.string()), url);
    return url;
}

std::string filter_of(const Model& model)
{
    return to_bytes(value_named<rtl::OUString>(model->getArgs(), "FilterName"));
}

template <typename Kind>
HeldFile<Kind>::~HeldFile()
{
    try {
        const Reference<css::util::XCloseable> closeable(model_, UNO_QUERY);
        if (closeable.is()) closeable->close(true);
    } catch (const css::uno::Exception&) { // NOLINT(bugprone-empty-catch): it goes with its process then
    }
}

template <typename Kind>
void HeldFile<Kind>::store(const std::filesystem::path& path, const std::string& filter)
{
    const Reference<css::frame::XStorable> storable(model_, UNO_QUERY_THROW);
    storable->storeToURL(file_url(path),
                         properties({property("FilterName", to_uno(filter)), property("Overwrite", true)}));
}

template <typename Kind>
void HeldFile<Kind>::calculate_all()
{
    const Reference<css::sheet::XCalculatable> calculatable(model_, UNO_QUERY_THROW);
    calculatable->calculateAll();
}

// A printer that is not there is passed over without a word, so what was set is read back.
template <typename Kind>
Printing HeldFile<Kind>::print(const std::string& printer)
{
    const Reference<css::view::XPrintable> printable(model_, UNO_QUERY_THROW);
    const rtl::OUString name = to_uno(printer);
    printable->setPrinter(properties({property("Name", name)}));
    if (value_named<rtl::OUString>(printable->getPrinter(), "Name") != name) return Printing::PrinterUnknown;
    const rtl::Reference<PrintJob> job(new PrintJob);
    const Reference<css::view::XPrintJobListener> listener(job.get());
    const Reference<css::view::XPrintJobBroadcaster> broadcaster(model_, UNO_QUERY_THROW);
    broadcaster->addPrintJobListener(listener);
    printable->print(properties({property("Wait", true)}));
    broadcaster->removePrintJobListener(listener);
    return job->is_spooled() ? Printing::Done : Printing::JobRefused;
}

template class HeldFile<OpenFile>;
template class HeldFile<OpenWorkbook>;
template class HeldFile<OpenDocument>;

} // namespace tarvik::libreoffice
