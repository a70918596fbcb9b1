#pragma once

#include "platform/platform.h"
#include "scripts/script.h"

#include <filesystem>
#include <optional>

namespace tarvik {

/// The clipboard of one run; the system's own is left alone.
class PlayerClipboard final : public Clipboard {
public:
    void clear() override { text_ = {}; }
    Text text() const override { return text_.str(); }
    void set_text(TextView text) override { text_ = SharedText(text); }

private:
    SharedText text_;
};

/// A screen of a given size that nobody looks at. The context menu stays open until the script picks an entry.
class PlayerScreen final : public Screen {
public:
    PlayerScreen(Transcript& transcript, double width, double height)
        : transcript_(transcript), width_(width), height_(height)
    {
    }

    double width() const override { return width_; }
    double height() const override { return height_; }
    void refresh() override {}
    void progress(std::uint64_t, std::uint64_t) override {}
    void popup_menu() override;

    /// Gives whether the menu was open, and closes it.
    bool close_menu();

private:
    Transcript& transcript_;
    double width_, height_;
    bool menu_open_ = false;
};

/// A printer that lays a copy of what is printed into a folder. With no folder there is no printer.
class PlayerPrinter final : public Printer {
public:
    PlayerPrinter(Transcript& transcript, std::optional<std::filesystem::path> folder)
        : transcript_(transcript), folder_(std::move(folder))
    {
    }
    /// Keeps what lies in the folder: a further document of the same name gets a number behind its own.
    void print(const std::filesystem::path& file, TextView name) override;

private:
    std::filesystem::path free_place(TextView name) const;
    Transcript& transcript_;
    std::optional<std::filesystem::path> folder_;
};

} // namespace tarvik
