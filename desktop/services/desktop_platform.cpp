#include "desktop/services/desktop_platform.h"

#include "desktop/look/busy_cursor.h"
#include "desktop/look/qt_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QScreen>

#include <algorithm>

namespace tarvik {

namespace {

constexpr double twips_an_inch = 1440;
constexpr double enough_width = 28800, enough_height = 16200;
constexpr int patience = 500;     // milliseconds of work before its progress shows
constexpr int between_shows = 60; // milliseconds; a run that reports more often is not slowed down

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
        QByteArray bytes;
        source_([&](TextView part) { bytes += to_utf8(part); });
        return bytes.replace("\r\n", "\n");
    }

private:
    TextSource source_;
};

// Each LF gets its CR.
Text with_our_line_ends(const QString& text)
{
    const Text taken = from_qt(text);
    Text lines;
    lines.reserve(taken.size() + static_cast<std::size_t>(std::ranges::count(taken, U'\n')));
    for (const char32_t character : taken) {
        if (character == U'\n' && !lines.ends_with(U'\r')) lines += U'\r';
        lines += character;
    }
    return lines;
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

double DesktopScreen::width() const
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return enough_width;
    return std::max(enough_width, screen->size().width() * twips_an_inch / screen->logicalDotsPerInchX());
}

double DesktopScreen::height() const
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return enough_height;
    return std::max(enough_height, screen->size().height() * twips_an_inch / screen->logicalDotsPerInchY());
}

// What the user does meanwhile waits in the toolkit; the windows are drawn and answer the system.
void DesktopScreen::refresh()
{
    if (since_shown_.isValid() && since_shown_.elapsed() < between_shows) return;
    work_.show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    since_shown_.start();
}

void DesktopScreen::progress(std::uint64_t done, std::uint64_t total)
{
    if (total == 0 || done >= total) {
        end_progress();
        return;
    }
    if (!since_start_.isValid()) since_start_.start();
    if (!cursor_) cursor_.emplace(true);
    if (since_start_.elapsed() < patience) return;
    work_.show_part(static_cast<double>(done) / static_cast<double>(total));
    refresh();
}

void DesktopScreen::end_progress()
{
    since_start_.invalidate();
    cursor_.reset();
    work_.show_part(-1);
}

} // namespace tarvik
