#include "engines/libreoffice/plugin/uno_values.h"

#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/uno/Exception.hpp>
#include <osl/file.hxx>

namespace tarvik::libreoffice {

rtl::OUString to_uno(const Text& text)
{
    static_assert(sizeof(char32_t) == sizeof(sal_uInt32));
    return rtl::OUString(reinterpret_cast<const sal_uInt32*>(text.data()), static_cast<sal_Int32>(text.size()));
}

rtl::OUString to_uno(const std::string& utf8)
{
    return {utf8.data(), static_cast<sal_Int32>(utf8.size()), RTL_TEXTENCODING_UTF8};
}

Text to_text(const rtl::OUString& text)
{
    Text made;
    made.reserve(static_cast<std::size_t>(text.getLength()));
    for (sal_Int32 at = 0; at < text.getLength();) made += static_cast<char32_t>(text.iterateCodePoints(&at));
    return made;
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

void rethrow_as_ours()
{
    try {
        throw;
    } catch (const css::lang::DisposedException& gone) {
        throw ConnectionLost(to_bytes(gone.Message));
    } catch (const css::uno::Exception& refused) {
        throw std::runtime_error(to_bytes(refused.Message));
    }
}

} // namespace tarvik::libreoffice
