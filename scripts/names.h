#pragma once

#include "mainwindow/mainwindow.h"
#include "scripts/script.h"

#include <algorithm>
#include <functional>

/// What scripts and transcripts call things: the controls of the three windows (`Text1(1)`, `RichTextBox3`,
/// `Form3.Text1(5)`), what can be asked of them and of the program, and values that stand for something.
namespace tarvik {

std::string script_name(const Control& control);
/// The control of that name, which the main window's may have with their window, too; nothing when there is none.
Control* find_control(const Program& program, std::string_view name);

/// An expression of a script, ready to be read again and again.
struct Expression {
    std::string written;               ///< as the script wrote it
    std::function<ScriptValue()> read; ///< its value at this moment
    const Control* control = nullptr;  ///< whose property it is; nothing for any other name
};

/// What a name means to this program: a property of a control, an element of a shared array, a shared member or the
/// clipboard. Throws ScriptFailure for an unknown name and for an index outside of its array.
Expression resolve(const Program& program, std::string_view written);
/// All names that a script can ask for; an array stands once, with i (and j) for its indices.
std::vector<std::string> all_names(const Program& program);

/// Names that are followed: each time that the value of one has changed is a line of the transcript.
class Watches {
public:
    explicit Watches(Transcript& transcript) : transcript_(transcript) {}

    /// The value that stands now prints nothing. A name that is followed already stays followed once.
    void add(Expression expression);
    /// To be called when a control has changed.
    void look_at(const Control& control) { look(&control); }
    /// To be called when a handler ends and before a dialog: everything that is no property of a control.
    void look_at_members() { look(nullptr); }

private:
    void look(const Control* control);

    struct Watch {
        Expression expression;
        ScriptValue last;
    };
    Transcript& transcript_;
    std::vector<Watch> watches_;
};

template <typename Meaning>
struct Named {
    std::string_view word;
    Meaning meaning;
};
inline constexpr Named<MouseButton> mouse_buttons[] = {
    {"left", MouseButton::Left}, {"middle", MouseButton::Middle}, {"right", MouseButton::Right}};
inline constexpr Named<MenuEntry> menu_entries[] = {
    {"copy1", MenuEntry::copy1}, {"paste1", MenuEntry::paste1}, {"nothing", MenuEntry::nothing}};
inline constexpr Named<Answer> answer_words[] = {
    {"ok", Answer::OK}, {"cancel", Answer::Cancel}, {"yes", Answer::Yes}, {"no", Answer::No}, {"none", Answer::None}};
inline constexpr Named<Icon> icon_words[] = {{"none", Icon::None},
                                             {"information", Icon::Information},
                                             {"question", Icon::Question},
                                             {"exclamation", Icon::Exclamation},
                                             {"critical", Icon::Critical}};

template <typename Rows, typename Meaning>
std::string word_of(const Rows& rows, Meaning meaning)
{
    return std::string(std::ranges::find(rows, meaning, &Named<Meaning>::meaning)->word);
}

/// Throws ScriptFailure for a word that is none of them; `kind` names what it should be.
template <typename Rows>
auto meaning_of(const Rows& rows, const Word& word, const std::string& kind = "word")
{
    for (const auto& row : rows)
        if (word.utf8() == row.word) return row.meaning;
    throw ScriptFailure("unknown " + kind + " " + word.utf8());
}

} // namespace tarvik
