#include "desktop/look/qt_text.h"
#include "desktop/services/desktop_platform.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace tarvik {

namespace {

// A text on its way to other programs, turned into theirs only when one of them asks.
class OfferedText final : public QMimeData {
public:
    explicit OfferedText(TextView text) : text_(text) {}

    Text text_as_set() const { return text_.str(); }
    QStringList formats() const override { return {"text/plain"}; }

protected:
    QVariant retrieveData(const QString&, QMetaType) const override { return lines_to_qt(text_.view); }

private:
    SharedText text_;
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
    else QGuiApplication::clipboard()->setMimeData(new OfferedText(text));
}

Text DesktopClipboard::text() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (const auto* own = dynamic_cast<const OfferedText*>(data)) return own->text_as_set();
    return data ? with_our_line_ends(data->text()) : Text();
}

} // namespace tarvik
