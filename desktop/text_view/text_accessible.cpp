#include "desktop/text_view/text_accessible.h"

#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"

#include <QAccessibleWidget>
#include <QRadioButton>

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::size_t most_at_once = 100'000; // characters; nobody listens to more

/// A text view as a screen reader sees it. Offsets count characters from 0.
class TextAccessible final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit TextAccessible(TextWidget& widget) : QAccessibleWidget(&widget, QAccessible::EditableText), widget_(widget)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiLine = state.editable = state.selectableText = true;
        return state;
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? text(0, characterCount()) : QAccessibleWidget::text(kind);
    }

    QString text(int start, int end) const override
    {
        Text part;
        const int from = std::max(start, 0);
        lines().append_to(place(from), std::min(place(end - from), most_at_once), part);
        return to_qt(part);
    }
    int characterCount() const override
    {
        return static_cast<int>(std::min<std::size_t>(lines().size(), std::numeric_limits<int>::max()));
    }
    int cursorPosition() const override { return static_cast<int>(widget_.caret()); }
    void setCursorPosition(int position) override { widget_.select(place(position), place(position)); }
    void selection(int index, int* start, int* end) const override
    {
        const TextRange selected = index == 0 ? widget_.selected() : TextRange{};
        *start = static_cast<int>(selected.start);
        *end = static_cast<int>(selected.end);
    }
    int selectionCount() const override { return widget_.selected().start < widget_.selected().end ? 1 : 0; }
    void addSelection(int start, int end) override { widget_.select(place(start), place(end)); }
    void removeSelection(int) override { widget_.select(widget_.caret(), widget_.caret()); }
    void setSelection(int, int start, int end) override { addSelection(start, end); }

    QRect characterRect(int offset) const override
    {
        const std::size_t at = place(offset);
        for (const auto& [row, y] : widget_.area().shown())
            if (at >= row.start && at < row.end) {
                const double left = widget_.area().x_of(row, at), right = widget_.area().x_of(row, at + 1);
                const QPointF corner = widget_.viewport()->mapToGlobal(QPointF(left, y));
                return QRectF(corner, QSizeF(right - left, row.height)).toAlignedRect();
            }
        return {};
    }
    int offsetAtPoint(const QPoint& point) const override
    {
        const QPoint at = widget_.viewport()->mapFromGlobal(point);
        return static_cast<int>(widget_.area().offset_at(at.x(), at.y()));
    }
    QString attributes(int offset, int* start, int* end) const override
    {
        *start = offset;
        *end = offset + 1;
        return {};
    }
    void scrollToSubstring(int start, int) override { widget_.show_place(place(start)); }

private:
    static std::size_t place(int offset) { return static_cast<std::size_t>(std::max(offset, 0)); }
    const TextLines& lines() const { return widget_.area().lines(); }
    TextWidget& widget_;
};

/// An option button. The toolkit takes one that does not clear its neighbours by itself for a check box.
class OptionAccessible final : public QAccessibleWidget {
public:
    explicit OptionAccessible(QRadioButton& option)
        : QAccessibleWidget(&option, QAccessible::RadioButton), option_(option)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = option_.isChecked();
        return state;
    }
    QStringList actionNames() const override { return QStringList(pressAction()) + QAccessibleWidget::actionNames(); }
    void doAction(const QString& name) override
    {
        if (name == pressAction()) option_.click();
        else QAccessibleWidget::doAction(name);
    }

private:
    QRadioButton& option_;
};

QAccessibleInterface* accessible_of(const QString&, QObject* object)
{
    if (auto* const text = dynamic_cast<TextWidget*>(object)) return new TextAccessible(*text);
    if (auto* const option = dynamic_cast<QRadioButton*>(object)) return new OptionAccessible(*option);
    auto* const widget = dynamic_cast<QWidget*>(object);
    const QVariant role = widget ? widget->property(accessible_role) : QVariant();
    if (!role.isValid()) return nullptr;
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void open_to_screen_readers()
{
    QAccessible::installFactory(accessible_of); // which stands in the toolkit's list once, however often it is named
}

void forget_accessible(QWidget& widget)
{
    if (!QAccessible::isActive()) return;
    if (auto* const known = QAccessible::queryAccessibleInterface(&widget))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}

} // namespace tarvik
