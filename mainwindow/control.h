#pragma once

#include "mainwindow/pane_text.h"
#include "platform/platform.h"
#include "platform/text/text.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

/// The model of the window's controls: what a front shows and what the handlers work on. Places and sizes are twips.
namespace tarvik {

enum class FormId { Form1, Form3, Form4 };

enum class Property {
    Contents,
    Caption,
    Visible,
    Enabled,
    Value,
    Left,
    Top,
    Width,
    Height,
    SelStart,
    SelLength,
    SelColor,
    SelFontSize,
    BackColor,
    Interval,
    WindowState,
    Marks,
    Focus,
    Front ///< a window that is meant to be seen, whatever covers it or has set it aside
};

/// Twips from the corner of what the control stands in.
struct Place {
    double left = 0, top = 0, width = 0, height = 0;
    friend bool operator==(const Place&, const Place&) = default;
};

/// A colour as blue x 65536 + green x 256 + red.
using Colour = std::uint32_t;
constexpr Colour rgb(unsigned red, unsigned green, unsigned blue)
{
    return blue * 65536 + green * 256 + red;
}

struct Selection {
    Position start;
    std::size_t length = 0;
    friend bool operator==(const Selection&, const Selection&) = default;
};

class Control;
class TextBox;

/// Where controls report to. A front listens to `property_changed`; the event table listens to `text_changed`.
struct ModelListeners {
    std::function<void(Control&, Property)> property_changed;
    std::function<void(TextBox&)> text_changed;
    /// A text was put in the place of the selection of a pane.
    std::function<void(const Control&, const Selection& replaced, TextView text)> pane_edited;
    /// Who reports: all controls, in the order in which they were made.
    std::vector<Control*> controls;
};

/// Index of a control that is not part of a control array.
inline constexpr int no_index = -1;

/// A button, frame, label, picture or window; the other kinds add to it. A setter that changes something tells the
/// listeners.
class Control {
public:
    Control(ModelListeners& listeners, FormId form, std::string_view name, int index = no_index)
        : listeners_(listeners), form_(form), name_(name), index_(index)
    {
        listeners.controls.push_back(this);
    }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    FormId form() const { return form_; }
    std::string_view name() const { return name_; }
    int index() const { return index_; }

    const Text& caption() const { return caption_; }
    const Place& place() const { return place_; }
    double left() const { return place_.left; }
    double top() const { return place_.top; }
    double width() const { return place_.width; }
    double height() const { return place_.height; }
    /// The control's own flag, whatever the window around it shows.
    bool visible() const { return visible_; }
    bool enabled() const { return enabled_; }
    Colour back_color() const { return back_color_; }

    void set_caption(Text caption) { change(caption_, std::move(caption), Property::Caption); }
    void set_left(double twips) { change(place_.left, twips, Property::Left); }
    void set_top(double twips) { change(place_.top, twips, Property::Top); }
    void set_width(double twips) { change(place_.width, twips, Property::Width); }
    void set_height(double twips) { change(place_.height, twips, Property::Height); }
    void set_place(const Place& place);
    void lay(std::u32string_view caption, const Place& place);
    void set_visible(bool visible) { change(visible_, visible, Property::Visible); }
    void set_enabled(bool enabled) { change(enabled_, enabled, Property::Enabled); }
    void set_back_color(Colour colour) { change(back_color_, colour, Property::BackColor); }
    /// Asks the front to give the control the focus.
    void request_focus() { touched(Property::Focus); }

protected:
    template <typename Value>
    bool change(Value& field, Value value, Property property)
    {
        if (field == value) return false;
        field = std::move(value);
        touched(property);
        return true;
    }
    void touched(Property property);
    const ModelListeners& listeners() const { return listeners_; }

private:
    const ModelListeners& listeners_;
    FormId form_;
    std::string_view name_;
    int index_;
    Text caption_;
    Place place_;
    bool visible_ = true, enabled_ = true;
    Colour back_color_ = rgb(240, 240, 240);
};

/// A window of the program. Its own place on the screen is the front's affair; width and height are the model's.
class Window : public Control {
public:
    using Control::Control;
    /// 0 normal, 1 minimised.
    int window_state() const { return window_state_; }
    void set_window_state(int state) { change(window_state_, state, Property::WindowState); }
    /// Asks the front to bring the window into view again.
    void request_front()
    {
        ++front_requests_;
        touched(Property::Front);
    }
    int front_requests() const { return front_requests_; }

private:
    int window_state_ = 0;
    int front_requests_ = 0;
};

class OptionButton : public Control {
public:
    using Control::Control;
    bool value() const { return value_; }
    void set_value(bool value) { change(value_, value, Property::Value); }

private:
    bool value_ = false;
};

class Timer : public Control {
public:
    using Control::Control;
    /// Milliseconds.
    int interval() const { return interval_; }
    void set_interval(int milliseconds) { change(interval_, milliseconds, Property::Interval); }

private:
    int interval_ = 0;
};

/// A control that holds a text, part of which may be selected.
class TextControl : public Control {
public:
    using Control::Control;
    const Selection& selection() const { return selection_; }
    virtual const PaneText& content() const = 0;
    virtual bool multi_line() const = 0;
    virtual void set_text(TextView text) = 0;
    /// Kept inside the text.
    void select(Selection selection);
    SharedText selected_text() const { return content().slice(selection_.start, selection_.length); }
    /// What is selected, whatever becomes of the control, without writing it out.
    TextSource selected_source() const;
    /// The caret stands behind the inserted text afterwards.
    virtual void replace_selection(TextView text) = 0;

protected:
    /// The text was changed: no listener hears of where the caret stands then.
    void set_caret(Selection selection) { selection_ = selection; }

private:
    Selection selection_;
};

/// A box for short texts. Every change of its text, the program's own too, is its change event.
class TextBox : public TextControl {
public:
    using TextControl::TextControl;
    const Text& text() const { return text_; }
    void set_text(TextView text) override;
    const PaneText& content() const override;
    bool multi_line() const override { return multi_line_; }
    void set_multi_line(bool multi_line) { multi_line_ = multi_line; }
    void replace_selection(TextView text) override;

private:
    Text text_;
    mutable std::optional<PaneText> content_; // of text_, when it was asked for
    bool multi_line_ = false;
};

/// A match that is shown in colour; `size` is in points.
struct Mark {
    Position start;
    std::size_t length = 0;
    Colour colour = 0;
    int size = 0;
    friend bool operator==(const Mark&, const Mark&) = default;
};

/// One of the three stacked rich-text boxes.
class Pane : public TextControl {
public:
    using TextControl::TextControl;

    const PaneText& content() const override { return content_; }
    TextView text() const { return content_.view(); }
    const Document& document() const { return content_.document(); }
    bool empty() const { return content_.empty(); }
    bool multi_line() const override { return true; }

    /// A new text has no marks and no selection.
    void set_content(PaneText content);
    void set_text(TextView text) override { set_content(PaneText(text)); }
    void append(TextView text);

    /// Marks behind the place move along, those in it go.
    void replace_selection(TextView text) override;

    /// Colour and size at the caret, or of the selection that was last given one.
    Colour selection_colour() const { return selection_colour_; }
    int selection_font_size() const { return selection_font_size_; }
    void set_selection_colour(Colour colour) { change(selection_colour_, colour, Property::SelColor); }
    void set_selection_font_size(int points) { change(selection_font_size_, points, Property::SelFontSize); }

    const std::vector<Mark>& marks() const { return marks_; }
    void set_marks(std::vector<Mark> marks) { change(marks_, std::move(marks), Property::Marks); }
    /// The size of all of the text that is not marked; 0 for the design's.
    int text_font_size() const { return text_font_size_; }
    void set_text_font_size(int points) { change(text_font_size_, points, Property::SelFontSize); }

    bool line_breaking = false; ///< whether lines break at the pane's width; start-up alone sets it

private:
    PaneText content_;
    std::vector<Mark> marks_;
    Colour selection_colour_ = 0;
    int selection_font_size_ = 0;
    int text_font_size_ = 0;
};

/// A control as its window is made with it; the caption of a box is its text.
struct ControlDesign {
    int index;
    std::u32string_view caption;
    Place place;
};

/// Controls of one name with indices, which need not be dense.
template <typename Kind>
class ControlArray {
public:
    ControlArray(ModelListeners& listeners, FormId form, std::string_view name, std::span<const ControlDesign> design)
    {
        for (const auto& [index, caption, place] : design) {
            Kind& control = add(listeners, form, name, index);
            if constexpr (std::is_same_v<Kind, TextBox>) control.set_text(caption);
            else control.set_caption(Text(caption));
            control.set_place(place);
        }
    }
    /// Those from 0 on.
    ControlArray(ModelListeners& listeners, FormId form, std::string_view name, int count)
    {
        for (int index = 0; index < count; ++index) add(listeners, form, name, index);
    }

    Kind& operator[](int index) { return controls_.at(index); }
    const Kind& operator[](int index) const { return controls_.at(index); }
    /// Pairs of index and control, in the order of the indices.
    auto begin() { return controls_.begin(); }
    auto end() { return controls_.end(); }

private:
    Kind& add(ModelListeners& listeners, FormId form, std::string_view name, int index)
    {
        return controls_
            .emplace(std::piecewise_construct, std::forward_as_tuple(index),
                     std::forward_as_tuple(listeners, form, name, index))
            .first->second;
    }
    std::map<int, Kind> controls_;
};

} // namespace tarvik
