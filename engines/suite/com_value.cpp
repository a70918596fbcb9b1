#include "engines/suite/com_value.h"

#include "platform/text/utf8.h"

#include <oleauto.h>

#include <new>
#include <utility>

namespace tarvik::windows {

std::wstring to_wide(TextView text)
{
    std::wstring made;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t character = text[i];
        if (character > 0xffff) {
            made += static_cast<wchar_t>(0xd800 + ((character - 0x10000) >> 10U));
            made += static_cast<wchar_t>(0xdc00 + ((character - 0x10000) & 0x3ffU));
        } else {
            made += static_cast<wchar_t>(character);
        }
    }
    return made;
}

Text from_wide(const wchar_t* text, std::size_t size)
{
    const auto unit = [&](std::size_t at) -> char32_t { return at < size ? static_cast<char16_t>(text[at]) : 0; };
    Text made;
    for (std::size_t i = 0; i < size; ++i) {
        const bool is_pair = is_high_surrogate(unit(i)) && is_low_surrogate(unit(i + 1));
        if (is_pair) made += joined(unit(i), unit(i + 1));
        else made += is_surrogate(unit(i)) ? replacement_character : unit(i);
        i += is_pair ? 1 : 0;
    }
    return made;
}

namespace {

BSTR allocated(std::wstring_view text)
{
    BSTR made = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!made) throw std::bad_alloc();
    return made;
}

} // namespace

ComValue::ComValue(bool value) noexcept
{
    value_.vt = VT_BOOL;
    value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

ComValue::ComValue(int value) noexcept
{
    value_.vt = VT_I4;
    value_.lVal = value;
}

ComValue::ComValue(TextView value)
{
    value_.bstrVal = allocated(to_wide(value));
    value_.vt = VT_BSTR;
}

ComValue::ComValue(const std::filesystem::path& value)
{
    value_.bstrVal = allocated(std::filesystem::path(value).make_preferred().native());
    value_.vt = VT_BSTR;
}

ComValue::ComValue(IDispatch& object) noexcept
{
    value_.vt = VT_DISPATCH;
    value_.pdispVal = &object;
    object.AddRef();
}

ComValue ComValue::missing() noexcept
{
    ComValue made;
    made.value_.vt = VT_ERROR;
    made.value_.scode = DISP_E_PARAMNOTFOUND;
    return made;
}

ComValue::ComValue(const ComValue& other)
{
    if (FAILED(::VariantCopy(&value_, const_cast<VARIANT*>(&other.value_)))) throw std::bad_alloc();
}

ComValue::ComValue(ComValue&& other) noexcept : value_(std::exchange(other.value_, {})) {}

ComValue& ComValue::operator=(ComValue other) noexcept
{
    std::swap(value_, other.value_);
    return *this;
}

ComValue::~ComValue()
{
    ::VariantClear(&value_);
}

IDispatch* ComValue::object() const noexcept
{
    return value_.vt == VT_DISPATCH ? value_.pdispVal : nullptr;
}

int ComValue::as_count() const noexcept
{
    VARIANT number{};
    if (FAILED(::VariantChangeType(&number, const_cast<VARIANT*>(&value_), 0, VT_I4))) return 0;
    return number.lVal;
}

} // namespace tarvik::windows
