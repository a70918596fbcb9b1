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
    ComValue() noexcept = default; ///< what an empty cell holds
    // NOLINTBEGIN(google-explicit-constructor): an argument is written as what it is.
    ComValue(bool value) noexcept;
    ComValue(int value) noexcept;
    ComValue(double value) noexcept;
    ComValue(TextView value);
    ComValue(const char32_t* value) : ComValue(TextView(value)) {}
    ComValue(const std::filesystem::path& value);
    // NOLINTEND(google-explicit-constructor)
    explicit ComValue(IDispatch& object) noexcept;
    /// A table of the values, row by row.
    ComValue(const std::vector<ComValue>& values, int rows, int columns);
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
    double as_number() const noexcept;
    int as_count() const noexcept { return static_cast<int>(as_number()); }
    /// The cells of a table, row by row; a value that is none is a table of one.
    std::vector<ComValue> cells() const;

private:
    VARIANT value_{};
};

} // namespace tarvik::windows
