#pragma once

class QWidget;

namespace tarvik {

/// Gives the controls of a window the texts that tell what they do, on the screen and to a screen reader.
void set_tooltips(QWidget& window);

} // namespace tarvik
