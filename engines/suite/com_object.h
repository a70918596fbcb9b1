#pragma once

#include "engines/suite/com_value.h"
#include "engines/suite/patience.h"

namespace tarvik::windows {

/// What an application answers to a call that it refuses, in its own words.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws ConnectionLost where the number says that the other program is gone, else Refusal.
[[noreturn]] void refuse(HRESULT number, TextView words);

/// An object of another program, whose members are looked up by name. A program that is busy is asked again for a
/// while; one that hangs is waited for until the patience ends. Names and values are those of English everywhere.
class ComObject {
public:
    ComObject(ComValue value, std::shared_ptr<Patience> patience);

    ComValue get(const wchar_t* name, std::vector<ComValue> arguments = {}) const;
    /// A member that is an object itself.
    ComObject object(const wchar_t* name, std::vector<ComValue> arguments = {}) const;
    void put(const wchar_t* name, ComValue value) const;
    ComValue call(const wchar_t* name, std::vector<ComValue> arguments = {}) const;

private:
    DISPID number_of(const wchar_t* name) const;
    ComValue invoke(const wchar_t* name, WORD way, std::vector<ComValue> arguments) const;

    ComValue value_;
    std::shared_ptr<Patience> patience_;
};

/// A new application of this name; nothing where none is installed. One that comes only after it was given up is asked
/// to quit.
std::optional<ComObject> create_application(const wchar_t* name, const std::shared_ptr<Patience>& patience);

} // namespace tarvik::windows
