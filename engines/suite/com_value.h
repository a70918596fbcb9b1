#pragma once

#include "engines/libreoffice/bridge.h"

#include <oaidl.h>
#include <oleauto.h>

/// Values and objects of an application that is driven from outside. Everything here is used on one thread.
namespace tarvik::windows {

std::wstring to_wide(TextView text);
Text from_wide(const wchar_t* text, std::size_t size);

/// A value that passes between the programs, and what is behind it goes with it.
class ComValue {
public:
    ComValue() noexcept = default; ///< no value at all
    // NOLINTBEGIN(google-explicit-constructor): an argument is written as what it is.
    ComValue(bool value) noexcept;
    ComValue(int value) noexcept;
    ComValue(TextView value);
    ComValue(const char32_t* value) : ComValue(TextView(value)) {}
    ComValue(const std::filesystem::path& value);
    // NOLINTEND(google-explicit-constructor)
    explicit ComValue(IDispatch& object) noexcept;
    /// An argument that is left out.
    static ComValue missing() noexcept;
    ComValue(const ComValue& other);
    ComValue(ComValue&& other) noexcept;
    ComValue& operator=(ComValue other) noexcept;
    ~ComValue();

    VARIANT& raw() noexcept { return value_; }
    const VARIANT& raw() const noexcept { return value_; }
    /// Nothing where it is no object.
    IDispatch* object() const noexcept;
    /// 0 where it is no number.
    int as_count() const noexcept;

private:
    VARIANT value_{};
};

} // namespace tarvik::windows
