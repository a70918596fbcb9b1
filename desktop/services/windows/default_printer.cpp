#include "desktop/services/desktop_printer.h"

#include "platform/files/paths.h"

#include <windows.h>

#include <winspool.h>

namespace tarvik {

std::string default_printer()
{
    DWORD size = 0;
    ::GetDefaultPrinterW(nullptr, &size);
    std::wstring name(size, L'\0');
    if (size == 0 || !::GetDefaultPrinterW(name.data(), &size)) return {};
    return utf8_of(name.c_str());
}

} // namespace tarvik
