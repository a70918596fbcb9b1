#pragma once

#include "desktop/front/front.h"

#include <QLineEdit>

namespace tarvik {

/// A box of one line. Keys reach its handler before its text; the text and the selection are the model's. A text that
/// is longer than the toolkit can show in one line is cut in the model too, and the user told.
class LineBox final : public QLineEdit {
public:
    /// `context_menu`: the right button belongs to the system and not to the toolkit's own menu.
    LineBox(Front& front, TextBox& box, bool context_menu, QWidget* parent);

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
