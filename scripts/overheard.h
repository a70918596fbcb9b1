#pragma once

#include "scripts/recorder.h"

#include <functional>

namespace tarvik {

/// The boxes of a front, whose answers the recorder hears. While a script is played it answers them.
class OverheardDialogs final : public Dialogs {
public:
    /// `dialogs` gives those that are asked at the moment.
    explicit OverheardDialogs(std::function<Dialogs&()> dialogs) : dialogs_(std::move(dialogs)) {}
    void set_recorder(Recorder& recorder) { recorder_ = &recorder; }

    Answer message(const Message& message) override;
    Text input(TextView title, TextView prompt, TextView preset) override;
    std::optional<Text> open_file(TextView filter) override { return heard(dialogs_().open_file(filter)); }
    std::optional<Text> save_file(TextView filter) override { return heard(dialogs_().save_file(filter)); }

private:
    std::optional<Text> heard(std::optional<Text> path) const;

    std::function<Dialogs&()> dialogs_;
    Recorder* recorder_ = nullptr;
};

/// A front's clipboard, of which the recorder hears what the program puts there and takes.
class OverheardClipboard final : public Clipboard {
public:
    explicit OverheardClipboard(Clipboard& clipboard) : clipboard_(clipboard) {}
    void set_recorder(Recorder& recorder) { recorder_ = &recorder; }

    void clear() override;
    Text text() const override;
    void set_text(TextView text) override;
    void set_source(const TextSource& source) override;

private:
    Clipboard& clipboard_;
    Recorder* recorder_ = nullptr;
};

} // namespace tarvik
