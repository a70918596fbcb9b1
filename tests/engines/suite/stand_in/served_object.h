#pragma once

#include "engines/suite/com.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tarvik::test {

using windows::ComValue;

/// What a stand-in is told to do wrong, and what it tells of itself. Both are files in one folder: the orders are lines
/// "what member [times]" of orders.txt, read once; journal.txt has a line for each call.
class Orders {
public:
    explicit Orders(std::filesystem::path folder);

    /// Obeys the orders for this member: waits for ever (hang) or a moment (slow), ends the process (die), or gives
    /// what the call is to answer: busy, or fail.
    HRESULT obey(const std::string& member);
    /// Whether there is such an order at all.
    bool is_for(const std::string& member) const { return orders_.contains(member); }
    void note(const std::string& line) const;

private:
    struct Order {
        std::string what;
        int times = 0;
    };

    std::filesystem::path folder_;
    std::map<std::string, Order> orders_;
};

/// What the objects of a stand-in share. It ends when the last object is let go of, unless it is shown and did not
/// quit: "Application.UserControl property (Excel)".
struct Server {
    Orders orders;
    HWND window = nullptr;
    std::atomic<int> objects = 0, open_files = 0;
    std::atomic<bool> was_used = false, has_quit = false, is_visible = false;

    ComValue window_value() const { return {static_cast<int>(reinterpret_cast<INT_PTR>(window))}; }
    bool has_ended() const { return was_used && objects == 0 && (has_quit || !is_visible); }
};

/// What a call is refused with.
struct Refused {
    HRESULT number;
    const wchar_t* words;
};

struct Call {
    bool is_put;
    std::vector<ComValue> arguments; ///< in the order in which they are written
};

/// An object with members that are looked up by name; it goes with the last reference to it.
class ServedObject final : public IDispatch {
public:
    using Work = std::function<ComValue(const Call&)>;
    struct Member {
        std::wstring name;
        Work work;
    };

    static ComValue make(Server& server, std::string name, std::vector<Member> members);

    HRESULT __stdcall QueryInterface(REFIID id, void** object) override;
    ULONG __stdcall AddRef() override;
    ULONG __stdcall Release() override;
    HRESULT __stdcall GetTypeInfoCount(UINT* count) override;
    HRESULT __stdcall GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT __stdcall GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID language, DISPID* numbers) override;
    HRESULT __stdcall Invoke(DISPID number, REFIID, LCID language, WORD way, DISPPARAMS* parameters, VARIANT* answer,
                             EXCEPINFO* complaint, UINT*) override;

private:
    ServedObject(Server& server, std::string name, std::vector<Member> members);
    ~ServedObject();
    HRESULT answer_call(const Member& member, const Call& call, VARIANT* answer, EXCEPINFO* complaint);

    Server& server_;
    std::string name_;
    std::vector<Member> members_;
    std::atomic<ULONG> references_ = 0;
};

/// As the system converts it, not as the engine under test does.
std::string to_bytes(const std::wstring& text);

} // namespace tarvik::test
