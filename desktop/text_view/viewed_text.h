#pragma once

#include "desktop/text_view/text_rows.h"
#include "mainwindow/pane.h"
#include "platform/text/text.h"

namespace tarvik {

/// What a text view shows and edits: a pane, or a box of several lines.
class ViewedText {
public:
    virtual ~ViewedText() = default;
    virtual Control& control() = 0;
    virtual PaneText content() = 0;
    virtual TextLook look() const = 0;
    virtual bool breaks_lines() const = 0;
    virtual Selection selection() const = 0;
    virtual void select(Selection selection) = 0;
    virtual TextSource selected_source() const = 0;
    virtual void replace_selection(TextView text) = 0;
};

class ViewedPane final : public ViewedText {
public:
    explicit ViewedPane(Pane& pane) : pane_(pane) {}
    Control& control() override { return pane_; }
    PaneText content() override { return pane_.content(); }
    TextLook look() const override { return {pane_.marks(), pane_.text_font_size()}; }
    bool breaks_lines() const override { return pane_.line_breaking(); }
    Selection selection() const override { return pane_.selection(); }
    void select(Selection selection) override { pane_.select(selection); }
    TextSource selected_source() const override { return pane_.selected_source(); }
    void replace_selection(TextView text) override { pane_.replace_selection(text); }

private:
    Pane& pane_;
};

class ViewedBox final : public ViewedText {
public:
    ViewedBox(TextBox& box, bool breaks_lines) : box_(box), breaks_lines_(breaks_lines) {}
    Control& control() override { return box_; }
    PaneText content() override
    {
        if (text_ != box_.text()) {
            text_ = box_.text();
            content_ = PaneText(TextView(text_));
        }
        return content_;
    }
    TextLook look() const override { return {}; }
    bool breaks_lines() const override { return breaks_lines_; }
    Selection selection() const override { return box_.selection(); }
    void select(Selection selection) override { box_.select(selection); }
    TextSource selected_source() const override
    {
        return [text = box_.selected_text()](const std::function<void(TextView)>& take) { take(text); };
    }
    void replace_selection(TextView text) override { box_.replace_selection(text); }

private:
    TextBox& box_;
    bool breaks_lines_;
    Text text_; // what content_ was made of
    PaneText content_;
};

/// An edit as what takes it back: `length` characters from `start` become `text` again.
struct Reversal {
    Position start;
    std::size_t length;
    Text text;
};

} // namespace tarvik
