#include "desktop/windows/form1_window.h"

#include "desktop/services/system.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

constexpr int title_bar = 36, border = 8; // of a window's frame, which is only known when it shows
constexpr double smallest_part = 0.5;     // of the opening size, that the user can make the window
const QString preset_query = "查寻条件";
const QString separator_key = "query/separator";
constexpr const char* usual_separator = "。\r\n";

// How much larger or smaller than designed the windows show, so that the main window of this size fits into the free
// part of the screen with its title bar; on a very large screen they show larger.
double opening_zoom(QSizeF full_size, QSize available)
{
    constexpr double share_of_large_screen = 0.62, most = 2;
    const double fits = std::min((available.width() - 2 * border) / full_size.width(),
                                 (available.height() - title_bar - border) / full_size.height());
    return fits < 1 ? std::max(fits, 0.25) : std::clamp(fits * share_of_large_screen, 1.0, most);
}

// The first file of what is dragged; empty where there is none.
QString dropped_file(const QDropEvent& event)
{
    for (const QUrl& url : event.mimeData()->urls())
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isFile()) return url.toLocalFile();
    return {};
}

} // namespace

Form1Window::Form1Window(const Front& front)
    : FormWindow(front, front.program.form1.window), form1_(front.program.form1),
      number_fonts_(pane_fonts(front.theme, scale())), progress_(*this),
      status_(
          [this] {
              front_.queue.submit([this] {
                  front_.queue.recorder().stop_wished();
                  front_.program.run.stop_wished = true;
              });
          },
          *this),
      find_bar_(
          front_, [this] { return shown_pane(); }, [this] { query_box_->setFocus(Qt::OtherFocusReason); }, *this)
{
    make_controls();
    commands_ = new CommandList(front_, *query_box_, *this, [this] { return shown_pane(); });
    key_hint_.setObjectName("keys");
    key_hint_.setAttribute(Qt::WA_TransparentForMouseEvents);
    for (QWidget* widget : std::initializer_list<QWidget*>{&status_, &key_hint_}) add_font(*widget, font_role::help);
    add_font(find_bar_, font_role::button);
    add_font(*commands_, font_role::notes); // even widths keep its columns
    set_tooltips(*this);
    separator_ = from_qt(user_settings().value(separator_key, usual_separator).toString());
    for (TextWidget* pane : panes_) pane->word_asked = [this](const QString& word) { look_up(word); };
    status_.result_clicked = [this] { go_to_result(); };
    setAcceptDrops(true);
}

void Form1Window::place()
{
    FormWindow::place();
    const int height = qRound(front_.scale.pixels(status_height));
    progress_.resize(width(), progress_.height());
    status_.setGeometry(0, this->height() - height, width(), height);
    // Between the pane and the query box.
    const QRect box = query_box_->geometry();
    const int hint_height = key_hint_.fontMetrics().height();
    key_hint_.setGeometry(box.left(), box.top() - hint_height - 1, width() - box.left(), hint_height);
}

void Form1Window::show_state()
{
    commands_->follow_box();
    const bool types_text = commands_->types_text;
    keep_separator();
    const bool offers = !separator_.empty() && !form1_.dbresult && no_option_selected(form1_) &&
                        form1_.number_box().text() != separator_;
    key_hint_.setText(types_text ? "键入的字都进入框中 · F4 回到按键"
                      : offers   ? "隔离符 " + to_qt(separator_).replace("\r\n", "↵") + " · F7 放回"
                                 : key_hint(form1_));
    const bool commands = form1_.dbresult && !types_text;
    if (query_box_->property("keysAreCommands").toBool() != commands) {
        query_box_->setProperty("keysAreCommands", commands);
        query_box_->update();
    }
    const TextWidget* const pane = shown_pane();
    status_.show_state(state_text(front_.program, pane && pane->edited()));
    for (TextWidget* each : panes_) each->update_ruler();
    find_bar_.follow();
}

TextWidget* Form1Window::shown_pane()
{
    TextWidget* top = nullptr;
    for (QObject* child : children()) // the one in front comes last
        if (const auto pane = std::ranges::find(panes_, child); pane != panes_.end() && (*pane)->isVisible())
            top = *pane;
    return top;
}

QRect Form1Window::pane_on_screen() const
{
    if (!isVisible()) return {};
    const QRect pane = front_.scale.rectangle(place_of(form1_.RichTextBox1));
    return {mapToGlobal(pane.topLeft()), pane.size()};
}

void Form1Window::dragEnterEvent(QDragEnterEvent* event)
{
    dragged_ = dropped_file(*event);
    if (!dragged_.isEmpty()) event->acceptProposedAction();
}

// What is dropped was announced when it came over the window; some programs do not announce it again.
void Form1Window::dropEvent(QDropEvent* event)
{
    if (dragged_.isEmpty()) return;
    event->acceptProposedAction();
    activateWindow();
    file_dropped(std::exchange(dragged_, {}));
}

void Form1Window::switch_focus()
{
    TextWidget* const pane = shown_pane();
    if (query_box_->hasFocus() && pane) pane->setFocus(Qt::ShortcutFocusReason);
    else query_box_->setFocus(Qt::ShortcutFocusReason);
}

void Form1Window::switch_typing()
{
    front_.queue.submit([this] { commands_->types_text = form1_.dbresult && !commands_->types_text; });
    query_box_->setFocus(Qt::ShortcutFocusReason);
}

void Form1Window::press(const Control& button)
{
    auto* widget = findChild<QAbstractButton*>(widget_name(button));
    if (!widget || !widget->isVisible() || !widget->isEnabled()) return;
    widget->click();
    front_.queue.submit([this] { to_query_box(); });
}

// A query lays the number of its results over the separator.
void Form1Window::keep_separator()
{
    const Text now = form1_.number_box().text();
    const auto is_separator = [](const Text& text) { return !text.empty() && text != U"数目" && !number(text); };
    if (now != number_before_ && number(now) && is_separator(number_before_)) {
        separator_ = number_before_;
        user_settings().setValue(separator_key, to_qt(separator_));
    }
    number_before_ = now;
}

void Form1Window::put_separator()
{
    front_.queue.submit([this] { form1_.number_box().set_text(separator_); });
}

void Form1Window::go_to_result()
{
    front_.queue.submit([this] {
        const auto shown = shown_result(front_.program);
        if (!shown) return;
        form1_.page_box().set_text(number_text(shown->page));
        press(form1_.Command2[8]);
    });
}

void Form1Window::look_up(QString word)
{
    front_.queue.submit([this, word]() mutable {
        TextWidget* const pane = shown_pane();
        if (word.isEmpty() && pane) word = pane->word_at_hand();
        if (word.isEmpty()) return;
        const char32_t first = from_qt(word).front();
        OptionButton& dictionary = first < 0x80 ? form1_.Option2 : form1_.Option1;
        auto* const option = findChild<QAbstractButton*>(widget_name(dictionary));
        if (!option || !option->isVisible()) {
            front_.program.notice = U"查词典请先回到阅读方式（还原默认）";
            return;
        }
        if (word_ < 0 || words_[word_] != word) {
            words_ = words_.mid(0, word_ + 1) << word;
            word_ = words_.size() - 1;
        }
        form1_.query_box().set_text(from_qt(word));
        option->click();
        press(form1_.Command1[1]);
    });
}

void Form1Window::walk_words(int step)
{
    if (word_ + step < 0 || word_ + step >= words_.size()) return;
    word_ += step;
    look_up(words_[word_]);
}

void Form1Window::zoom_panes(int step)
{
    fonts_.zoom(step);
    for (TextWidget* pane : panes_) pane->lay_anew();
}

void Form1Window::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier) && event->angleDelta().y() != 0)
        zoom_panes(event->angleDelta().y() > 0 ? 1 : -1);
}

// Where no pane shows there is an empty one and no hole.
void Form1Window::paintEvent(QPaintEvent* event)
{
    FormWindow::paintEvent(event);
    QPainter painter(this);
    const QColor fill = to_qt(form1_.RichTextBox1.back_color());
    paint_box(painter, front_.scale.rectangle(place_of(form1_.RichTextBox1)), fill, false);
}

// The keys work again as soon as a button has done its work.
void Form1Window::to_query_box()
{
    if (isAncestorOf(focusWidget())) query_box_->setFocus(Qt::OtherFocusReason);
    // What nobody has typed goes with the first key.
    if (query_box_->text() == preset_query) query_box_->selectAll();
}

void Form1Window::fit_to_screen(QSize available)
{
    front_.scale.zoom = 1;
    full_size_ = {front_.scale.pixels(form1_.window.width()), front_.scale.pixels(form1_.window.height())};
    largest_zoom_ = opening_zoom(full_size_, available);
    set_zoom(largest_zoom_);
    setMinimumSize((full_size_ * largest_zoom_ * smallest_part).toSize());
}

// Below its opening size the window shows everything smaller, since the model's places need that much room.
void Form1Window::take_size(QSize size)
{
    const double fits = std::min(size.width() / full_size_.width(), size.height() / full_size_.height());
    set_zoom(std::min(largest_zoom_, fits));
    FormWindow::take_size(size);
}

void Form1Window::before_first_show()
{
    // The window of column numbers has room on its right where the screen is wide enough.
    const QRect free = screen()->availableGeometry();
    const int both = width() + front_.scale.size(front_.program.form3.window).width() + 3 * border;
    const int left = std::max(border, (free.width() - std::min(both, free.width())) / 2);
    const int spare = free.height() - height() - title_bar;
    move(free.left() + left, free.top() + std::max(0, spare / 3));
    query_box_->setFocus(Qt::OtherFocusReason);
    query_box_->selectAll();
    const bool is_watched = QGuiApplication::platformName() != "offscreen";
    if (is_watched && style()->styleHint(QStyle::SH_Widget_Animate) != 0) grow();
}

void Form1Window::grow()
{
    constexpr int milliseconds = 180;
    growth_.setDuration(milliseconds);
    growth_.setStartValue(size() / 2);
    growth_.setEndValue(size());
    growth_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&growth_, &QPropertyAnimation::finished, this, [this] { post_resize(size()); });
    growth_.start();
}

void Form1Window::resizeEvent(QResizeEvent* event)
{
    place();
    if (!grows()) FormWindow::resizeEvent(event);
}

void Form1Window::mousePressEvent(QMouseEvent* event)
{
    pressed_ = event->button() == Qt::LeftButton;
}

void Form1Window::mouseReleaseEvent(QMouseEvent* event)
{
    const bool clicked = pressed_ && event->button() == Qt::LeftButton && rect().contains(event->pos());
    pressed_ = false;
    if (!clicked) return;
    for (const EventKind kind : {EventKind::MouseDown, EventKind::MouseUp, EventKind::Click})
        front_.queue.post({kind, form1_.window});
}

// A key that a button has no use for is meant for the query box.
void Form1Window::keyPressEvent(QKeyEvent* event)
{
    if (query_box_->hasFocus() || typed_characters(*event).empty()) return;
    query_box_->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(query_box_, event);
}

} // namespace tarvik
