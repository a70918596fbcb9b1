#include "designer/designer_window.h"

namespace tarvik {

void empty_design_box(TextBox& box)
{
    box.set_text({});
}

void show_designer(Program& program)
{
    program.form4.window.set_visible(true);
}

void hide_designer(Program& program)
{
    program.form4.window.set_visible(false);
}

void Form4_Unload(Program& program)
{
    program.module1.designeropen = false;
    program.form4.window.set_visible(false);
    load_design_texts(program.form4);
}

} // namespace tarvik
