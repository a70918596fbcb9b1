#pragma once

#include "desktop/look/qt_text.h"
#include "desktop/look/theme.h"
#include "platform/platform.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>
#include <QScreen>

#include <algorithm>
#include <functional>

namespace tarvik {

/// A text on its way to other programs, written out only when one of them asks. It goes straight into the bytes that
/// they get, since a large table takes much more room in any other form.
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
        const BusyCursor busy;
        QByteArray bytes;
        source_([&](TextView part) { bytes += to_utf8(part); });
        return bytes.replace("\r\n", "\n");
    }

private:
    TextSource source_;
};

/// The system's clipboard. What the program itself has put there comes back character for character; other programs
/// get the line ends that they expect, and theirs become CR LF.
class DesktopClipboard final : public Clipboard {
public:
    void clear() override { QGuiApplication::clipboard()->clear(); }
    Text text() const override
    {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        if (const auto* own = dynamic_cast<const OfferedText*>(data)) return own->text_as_set();
        return data ? from_qt(data->text().replace("\r\n", "\n").replace('\n', "\r\n")) : Text();
    }
    void set_text(TextView text) override
    {
        if (text.empty()) clear();
        else set_source([text = text.str()](const std::function<void(TextView)>& take) { take(text); });
    }
    void set_source(const TextSource& source) override
    {
        QGuiApplication::clipboard()->setMimeData(new OfferedText(source));
    }
};

/// The screen in twips. A screen narrower than the design asks for counts as wide enough, and the windows are shown
/// smaller instead.
class DesktopScreen final : public Screen {
public:
    struct Work {
        std::function<void()> show;            ///< brings the windows up to date
        std::function<void(double)> show_part; ///< a part of 1 done; a negative number ends the display
        std::function<void()> open_menu;
    };
    void set_work(Work work) { work_ = std::move(work); }

    double width() const override { return std::max(28800.0, size().width()); }
    double height() const override { return std::max(16200.0, size().height()); }
    // What the user does meanwhile waits in the toolkit; the windows are drawn and answer the system.
    void refresh() override
    {
        if (since_shown_.isValid() && since_shown_.elapsed() < between_shows) return;
        work_.show();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        since_shown_.start();
    }
    void progress(std::uint64_t done, std::uint64_t total) override
    {
        if (total == 0 || done >= total) return end_progress();
        if (!since_start_.isValid()) since_start_.start();
        if (since_start_.elapsed() < patience) return;
        work_.show_part(static_cast<double>(done) / static_cast<double>(total));
        refresh();
    }
    void popup_menu() override { work_.open_menu(); }
    /// A handler has ended, and with it the work whose progress it told.
    void end_progress()
    {
        since_start_.invalidate();
        work_.show_part(-1);
    }

private:
    static constexpr int patience = 500;     // milliseconds of work before its progress shows
    static constexpr int between_shows = 60; // milliseconds; a run that reports more often is not slowed down

    static QSizeF size()
    {
        constexpr double twips_an_inch = 1440;
        const QScreen* screen = QGuiApplication::primaryScreen();
        if (!screen) return {};
        const QSize pixels = screen->size();
        return {pixels.width() * twips_an_inch / screen->logicalDotsPerInchX(),
                pixels.height() * twips_an_inch / screen->logicalDotsPerInchY()};
    }

    Work work_{[] {}, [](double) {}, [] {}};
    QElapsedTimer since_start_; // of the work whose progress is shown
    QElapsedTimer since_shown_;
};

} // namespace tarvik
