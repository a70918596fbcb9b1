#include "desktop/look/qt_text.h"

#include "platform/failure.h"
#include "platform/files/paths.h"

namespace tarvik {

QString to_qt(TextView text)
{
    return text.visit([](auto characters) {
        using Char = std::remove_const_t<typename decltype(characters)::element_type>;
        const auto size = static_cast<qsizetype>(characters.size());
        if constexpr (sizeof(Char) == 1)
            return QString::fromLatin1(reinterpret_cast<const char*>(characters.data()), size);
        else if constexpr (sizeof(Char) == 2) return QString::fromUtf16(characters.data(), size);
        else return QString::fromUcs4(characters.data(), size);
    });
}

Text from_qt(const QString& text)
{
    return text.toStdU32String();
}

QString lines_to_qt(TextView text)
{
    return to_qt(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

int qt_place(TextView text, std::size_t characters)
{
    return static_cast<int>(to_qt(text.substr(0, characters)).size());
}

std::size_t place_of_qt(const QString& text, int units)
{
    return from_qt(text.left(units)).size();
}

QString real_path(const Files& files, TextView path)
{
    try {
        return QString::fromStdString(utf8_of(files.resolve(path)));
    } catch (const Failure&) {
        return {};
    }
}

QColor to_qt(Colour colour)
{
    return {static_cast<int>(colour & 255), static_cast<int>(colour >> 8 & 255), static_cast<int>(colour >> 16 & 255)};
}

} // namespace tarvik
