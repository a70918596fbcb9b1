#include "desktop/look/busy_cursor.h"
#include "desktop/look/qt_text.h"
#include "desktop/services/desktop_platform.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace tarvik {

namespace {

// Other programs get one character for a line end.
QByteArray in_utf8(const TextSource& source)
{
    QByteArray bytes;
    bool held = false; // a CR that may belong to a LF
    source([&](TextView part) {
        for (const char byte : to_utf8(part)) {
            if (held && byte != '\n') bytes += '\r';
            held = byte == '\r';
            if (!held) bytes += byte;
        }
    });
    if (held) bytes += '\r';
    return bytes;
}

// A text on its way to other programs, written out only when one of them asks. It goes straight into the bytes that
// they get, since a large table takes much more room in any other form.
class OfferedText final : public QMimeData {
public:
    explicit OfferedText(TextSource source) : source_(std::move(source)) {}

    Text text_as_set() const
    {
        Text text;
        source_([&text](TextView part) { text += part.str(); });
        return text;
    }
    QStringList formats() const override { return {"text/plain"}; }

protected:
    QVariant retrieveData(const QString&, QMetaType) const override
    {
        const BusyCursor busy(true);
        return in_utf8(source_);
    }

private:
    TextSource source_;
};

Text with_our_line_ends(const QString& text)
{
    QString lines = text;
    lines.replace("\r\n", "\n");
    return from_qt(lines.replace('\n', "\r\n"));
}

} // namespace

void DesktopClipboard::clear()
{
    QGuiApplication::clipboard()->clear();
}

void DesktopClipboard::set_text(TextView text)
{
    if (text.empty()) clear();
    else set_source([text = text.str()](const std::function<void(TextView)>& take) { take(text); });
}

void DesktopClipboard::set_source(const TextSource& source)
{
    QGuiApplication::clipboard()->setMimeData(new OfferedText(source));
}

Text DesktopClipboard::text() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (const auto* own = dynamic_cast<const OfferedText*>(data)) return own->text_as_set();
    return data ? with_our_line_ends(data->text()) : Text();
}

} // namespace tarvik
