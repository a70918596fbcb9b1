#pragma once

#include "desktop/front/front.h"

#include <QWidget>

#include <memory>

namespace tarvik {

/// The window of the model's preview, which comes and goes with it, beside the designer. What the design has written is
/// tinted and names its row of the design.
std::unique_ptr<QWidget> make_preview_window(Front& front, const QWidget& designer);

} // namespace tarvik
