#include "tests/engines/suite/stand_in_suite.h"

#include "platform/files/paths.h"
#include "tests/support/compound_files.h"

#include <windows.h>

#include <string_view>

namespace tarvik::test {

namespace {

struct ApplicationRow {
    const wchar_t* name;
    const wchar_t* class_id;
    const wchar_t* program;
};
constexpr ApplicationRow applications[] = {
    {L"Excel.Application", workbooks_class, L"EXCEL.EXE"},
    {L"Word.Application", documents_class, L"WINWORD.EXE"},
};

void set_key(const std::wstring& key, const std::wstring& value)
{
    const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    ::RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, value.c_str(), size);
}

constexpr std::string_view mark = "stand-in:";
constexpr std::size_t length_digits = 10;

std::wstring class_key(const ApplicationRow& row)
{
    return L"CLSID\\" + std::wstring(row.class_id);
}

} // namespace

bool may_install_stand_in()
{
    return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

std::filesystem::path stand_in_program(const wchar_t* name)
{
    return program_file().parent_path() / "stand_in" / name;
}

void install_stand_in(const std::filesystem::path& folder)
{
    for (const auto& row : applications) {
        set_key(row.name + std::wstring(L"\\CLSID"), row.class_id);
        set_key(class_key(row) + L"\\LocalServer32",
                L"\"" + stand_in_program(row.program).native() + L"\" \"" + folder.native() + L"\"");
    }
}

void remove_stand_in()
{
    for (const auto& row : applications) {
        ::RegDeleteTreeW(HKEY_CLASSES_ROOT, row.name);
        ::RegDeleteTreeW(HKEY_CLASSES_ROOT, class_key(row).c_str());
    }
}

std::string older_with(const std::string& stream, const std::string& package, bool with_macros)
{
    constexpr std::size_t least = 4096; // of a stream
    auto digits = std::to_string(package.size());
    digits.insert(0, length_digits - digits.size(), '0');
    std::string bytes = std::string(mark) + digits + package;
    if (bytes.size() < least) bytes.resize(least);
    if (with_macros) return compound_file({{stream, bytes}, {"_VBA_PROJECT_CUR", std::string(least, 'm')}});
    return compound_file({{stream, bytes}});
}

std::string packed_in(const std::string& older)
{
    const auto at = older.find(mark);
    if (at == std::string::npos) return {};
    return older.substr(at + mark.size() + length_digits, std::stoul(older.substr(at + mark.size(), length_digits)));
}

} // namespace tarvik::test
