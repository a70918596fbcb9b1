#pragma once

#include "desktop/front/front.h"

#include <QLineEdit>

#include <functional>

namespace tarvik {

/// A box of one line. Keys reach its handler before its text; the text and the selection are the model's. A text that
/// is longer than the toolkit can show in one line is cut in the model too, and the user told.
class LineBox final : public QLineEdit {
public:
    /// `context_menu`: the right button belongs to the system and not to the toolkit's own menu.
    LineBox(Front& front, TextBox& box, bool context_menu, QWidget* parent);

    /// Whether a typed character goes into the text at once, as a pasted one does, and is no press of a key.
    std::function<bool(char32_t)> takes_as_text = [](char32_t) { return false; };
    /// Brings text and selection up to date with the model.
    void show_model();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void type(TextView keys);
    void reach(char32_t key);
    void paste_text();
    void cut_model();
    void text_to_model();
    void selection_to_model();

    Front& front_;
    TextBox& box_;
    bool context_menu_;
    bool pressed_ = false;
};

} // namespace tarvik
