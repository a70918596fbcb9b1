#pragma once

#include "engines/libreoffice/bridge.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XPrintJobBroadcaster.hpp>
#include <com/sun/star/view/XPrintable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <osl/file.hxx>
#include <rtl/ref.hxx>
#include <rtl/ustring.hxx>

#include <atomic>
#include <initializer_list>

namespace tarvik::libreoffice {

namespace css = com::sun::star;

using Properties = css::uno::Sequence<css::beans::PropertyValue>;

inline rtl::OUString to_uno(const Text& text)
{
    static_assert(sizeof(char32_t) == sizeof(sal_uInt32));
    return rtl::OUString(reinterpret_cast<const sal_uInt32*>(text.data()), static_cast<sal_Int32>(text.size()));
}

inline rtl::OUString to_uno(const std::string& utf8)
{
    return {utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8};
}

inline std::string to_bytes(const rtl::OUString& text)
{
    const rtl::OString utf8 = text.toUtf8();
    return {utf8.getStr(), static_cast<std::size_t>(utf8.getLength())};
}

inline rtl::OUString file_url(const std::filesystem::path& path)
{
    rtl::OUString url;
    osl::FileBase::getFileURLFromSystemPath(to_uno(path.string()), url);
    return url;
}

template <typename Value>
css::beans::PropertyValue property(const char* name, const Value& value)
{
    css::beans::PropertyValue made;
    made.Name = rtl::OUString::createFromAscii(name);
    made.Value <<= value;
    return made;
}

inline Properties properties(std::initializer_list<css::beans::PropertyValue> list)
{
    return {list.begin(), static_cast<sal_Int32>(list.size())};
}

/// A property's value; a default one where the object has none of that kind.
template <typename Value>
Value property_of(const css::uno::Reference<css::uno::XInterface>& object, const char* name)
{
    Value value{};
    const css::uno::Reference<css::beans::XPropertySet> set(object, css::uno::UNO_QUERY_THROW);
    set->getPropertyValue(rtl::OUString::createFromAscii(name)) >>= value;
    return value;
}

/// The value of that name in the list; a default one where it has none of that kind.
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
        if (event.State == css::view::PrintableState_JOB_SPOOLED) is_spooled = true;
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*event*/) override {}

    std::atomic<bool> is_spooled = false;
};

using Model = css::uno::Reference<css::frame::XModel>;

/// What every kind of open file does alike; `Kind` is OpenFile or one of its kinds.
template <typename Kind>
class HeldFile : public Kind {
public:
    explicit HeldFile(const Model& model) : model_(model) {}
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() override
    {
        try {
            const css::uno::Reference<css::util::XCloseable> closeable(model_, css::uno::UNO_QUERY);
            if (closeable.is()) closeable->close(true);
        } catch (const css::uno::Exception&) { // NOLINT(bugprone-empty-catch): it goes with its process then
        }
    }

    void store(const std::filesystem::path& path, const std::string& filter) override
    {
        as<css::frame::XStorable>()->storeToURL(
            file_url(path), properties({property("FilterName", to_uno(filter)), property("Overwrite", true)}));
    }

    void calculate_all() override { as<css::sheet::XCalculatable>()->calculateAll(); }

    // A printer that is not there is passed over without a word, so what was set is read back.
    Printing print(const std::string& printer) override
    {
        const auto printable = as<css::view::XPrintable>();
        const rtl::OUString name = to_uno(printer);
        printable->setPrinter(properties({property("Name", name)}));
        if (value_named<rtl::OUString>(printable->getPrinter(), "Name") != name) return Printing::PrinterUnknown;
        const rtl::Reference<PrintJob> job(new PrintJob);
        const css::uno::Reference<css::view::XPrintJobListener> listener(job.get());
        const auto broadcaster = as<css::view::XPrintJobBroadcaster>();
        broadcaster->addPrintJobListener(listener);
        printable->print(properties({property("Wait", true)}));
        broadcaster->removePrintJobListener(listener);
        return job->is_spooled ? Printing::Done : Printing::JobRefused;
    }

protected:
    /// The model by another of its faces.
    template <typename Face>
    css::uno::Reference<Face> as() const
    {
        return css::uno::Reference<Face>(model_, css::uno::UNO_QUERY_THROW);
    }

private:
    Model model_;
};

/// A null pointer where the model is none of that kind.
std::unique_ptr<OpenWorkbook> hold_workbook(const Model& model);
std::unique_ptr<OpenDocument> hold_document(const Model& model,
                                            const css::uno::Reference<css::uno::XComponentContext>& context);

} // namespace tarvik::libreoffice
