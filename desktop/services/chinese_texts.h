#pragma once

#include <QTranslator>

namespace tarvik {

/// The toolkit's own words in the language of the program: buttons of boxes, menus of boxes, the file dialog.
class ChineseTexts final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* disambiguation, int number) const override;
};

} // namespace tarvik
