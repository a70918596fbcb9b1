#include "tests/desktop/desktop_fixture.h"

#include "desktop/services/system.h"

#include <QAbstractButton>
#include <QLabel>

#include <cstdlib>

namespace tarvik::test {
namespace {

using DesktopLook = DesktopFixture;

// The three panes lie on each other, and one of them shows.
std::vector<QWidget*> shown_children(const QWidget& parent)
{
    std::vector<QWidget*> shown;
    for (QWidget* child : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (child->isVisible() && child->objectName().startsWith("Form")) shown.push_back(child);
    return shown;
}

void expect_legible(const QWidget& widget)
{
    const std::string name = widget.objectName().toStdString();
    const QFontMetrics metrics = widget.fontMetrics();
    if (const auto* button = dynamic_cast<const QAbstractButton*>(&widget)) {
        EXPECT_LE(metrics.horizontalAdvance(button->text()), widget.width()) << name;
        EXPECT_LE(metrics.height(), widget.height() + 2) << name;
    }
    if (const auto* label = dynamic_cast<const QLabel*>(&widget); label && label->wordWrap()) {
        EXPECT_LE(label->heightForWidth(label->width()), label->height()) << name;
    }
    if (dynamic_cast<const QLineEdit*>(&widget)) {
        EXPECT_LE(metrics.height(), widget.height()) << name;
    }
}

void expect_in_order(const QWidget& parent)
{
    const auto children = shown_children(parent);
    EXPECT_FALSE(children.empty());
    for (std::size_t i = 0; i < children.size(); ++i) {
        const std::string name = children[i]->objectName().toStdString();
        EXPECT_TRUE(parent.rect().contains(children[i]->geometry())) << name << " is clipped";
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(children[i]->geometry().intersects(children[j]->geometry()))
                << name << " overlaps " << children[j]->objectName().toStdString();
        expect_legible(*children[i]);
        if (children[i]->objectName().contains("Frame")) expect_in_order(*children[i]);
    }
}

TEST_F(DesktopLook, nothing_is_clipped_or_overlaps_at_any_size_in_both_modes)
{
    start();
    for (int mode = 0; mode < 2; ++mode) {
        for (const QSize size :
             {QSize(640, 400), QSize(784, 560), QSize(900, 1400), QSize(1280, 680), QSize(3800, 2000)}) {
            desktop->main_window().resize(size);
            QTest::qWait(1);
            SCOPED_TRACE(std::to_string(size.width()) + " " + std::to_string(size.height()));
            expect_in_order(desktop->main_window());
        }
        click("Form1.Command6");
    }
}

TEST_F(DesktopLook, the_other_windows_show_all_of_their_texts_and_leave_the_buttons_that_are_needed_next)
{
    start();
    program().form3.window.set_visible(true);
    click("Form1.Command6");
    click("Form1.Command3");
    expect_in_order(find("Form3"));
    expect_in_order(*find("Form4.Frame1").parentWidget());
    EXPECT_TRUE(find("Form4").isVisible());
    const auto on_screen = [](QWidget& widget) { return QRect(widget.mapToGlobal(QPoint(0, 0)), widget.size()); };
    for (const char* window : {"Form3", "Form4"})
        for (const char* button : {"Form1.Command6", "Form1.Command3"})
            EXPECT_FALSE(find(window).frameGeometry().intersects(on_screen(find(button)))) << window << button;
    EXPECT_FALSE(find("Form3").frameGeometry().intersects(on_screen(find("Form1.Text1(1)"))));
}

TEST_F(DesktopLook, the_model_and_the_window_agree_on_its_size)
{
    start();
    const double opened = form1().window.width();
    EXPECT_NEAR(opened, 14844, 1) << "the opening size, whatever the screen";
    FormWindow& window = desktop->main_window();
    window.resize(window.width() * 2, window.height() * 2);
    QTest::qWait(1);
    EXPECT_GT(form1().window.width(), opened * 1.5);
    const double large = form1().window.width();
    window.showMinimized();
    EXPECT_EQ(form1().window.window_state(), 1);
    window.showNormal();
    EXPECT_EQ(form1().window.window_state(), 0);
    EXPECT_EQ(form1().window.width(), large);
}

TEST_F(DesktopLook, every_text_stands_off_from_its_ground_in_every_look)
{
    const auto difference = [](const QColor& a, const QColor& b) { return std::abs(qGray(a.rgb()) - qGray(b.rgb())); };
    for (const auto& [name, look] :
         {std::pair("light", Look::Light), {"dark", Look::Dark}, {"contrast", Look::HighContrast}}) {
        user_settings().setValue("view/look", name);
        start();
        click("Form1.Command6");
        for (QWidget* widget : desktop->main_window().findChildren<QWidget*>()) {
            if (!widget->objectName().startsWith("Form1.")) continue;
            const QPalette palette = widget->palette();
            const QColor ground = palette.color(QPalette::Base);
            for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
                EXPECT_GE(difference(palette.color(QPalette::Active, role), ground),
                          look == Look::HighContrast ? 200 : 130)
                    << name << widget->objectName().toStdString();
            for (const Colour ink : {44390U, 173U, 11363942U})
                EXPECT_GE(difference(readable(to_qt(ink), ground), ground), look == Look::Light ? 25 : 80)
                    << name << ink;
        }
        desktop.reset();
    }
    user_settings().remove("view/look");
}

} // namespace
} // namespace tarvik::test
