#pragma once

#include "engines/libreoffice/bridge.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <rtl/ustring.hxx>

#include <initializer_list>

namespace tarvik::libreoffice {

namespace css = com::sun::star;

using Properties = css::uno::Sequence<css::beans::PropertyValue>;

rtl::OUString to_uno(const Text& text);
rtl::OUString to_uno(const std::string& utf8);
std::string to_bytes(const rtl::OUString& text);
rtl::OUString file_url(const std::filesystem::path& path);

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

using Model = css::uno::Reference<css::frame::XModel>;

std::string filter_of(const Model& model);

/// What every kind of open file does alike; `Kind` is OpenFile or one of its kinds.
template <typename Kind>
class HeldFile : public Kind {
public:
    explicit HeldFile(const Model& model) : model_(model) {}
    ~HeldFile() override;
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    void store(const std::filesystem::path& path, const std::string& filter) override;
    void calculate_all() override;
    Printing print(const std::string& printer) override;

protected:
    const Model& model() const { return model_; }

private:
    Model model_;
};

/// A null pointer where the model is none of that kind.
std::unique_ptr<OpenWorkbook> hold_workbook(const Model& model);
std::unique_ptr<OpenDocument> hold_document(const Model& model,
                                            const css::uno::Reference<css::uno::XComponentContext>& context);

} // namespace tarvik::libreoffice
