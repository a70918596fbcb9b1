#include "desktop/desktop.h"

#include "desktop/look/qt_text.h"
#include "desktop/services/system.h"
#include "runs/batch_runner.h"
#include "runs/engines.h"

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QScreen>

#include <iostream>

namespace tarvik {

namespace {

constexpr int growth_milliseconds = 1000;
constexpr std::uint64_t half_way = 2'000; // milliseconds

Scale scale_of_screen()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return {screen ? screen->logicalDotsPerInch() : 96.0, 1};
}

} // namespace

Desktop::Desktop(const std::filesystem::path& installation, const DriveMap& drives)
    : files_(installation, drives), theme_(files_),
      libreoffice_({.meanwhile =
                        [this](std::chrono::milliseconds waited) {
                            // How long it will take nobody knows: the line fills ever more slowly.
                            const auto done = static_cast<std::uint64_t>(waited.count());
                            screen_.progress(done, done + half_way);
                        }}),
      dialogs_(to_qt(files_.installation_folder()), drives),
      heard_dialogs_([this]() -> Dialogs& { return player_.dialogs(); }, recorder_),
      heard_clipboard_(clipboard_, recorder_), office_(make_engines(Engine::Auto, files_, printer_, libreoffice_)),
      program_({heard_dialogs_, heard_clipboard_, clock_, files_, screen_, printer_}, *office_), recorder_(program_),
      queue_(program_, recorder_, [this] { event_ended(); }),
      player_(program_, queue_, dialogs_), front_{program_, queue_, mirror_, theme_, scale_of_screen()}, form1_(front_),
      form3_(front_, form1_), form4_(front_, form1_), context_menu_(queue_, program_.form1),
      tasks_(front_, player_, form1_.status(), form1_),
      menu_(
          program_, form1_, form3_, form4_, tasks_,
          [this](auto look) {
              look_ = look;
              apply_look();
          },
          [this](bool follows) { follows ? growth_.start() : growth_.stop(); })
{
    track_focus(front_, form1_);
    for (auto& [index, timer] : program_.form1.Timer1) run_timer(front_, timer, form1_);
    for (Timer* timer : program_.form1.batch_timers()) run_timer(front_, *timer, form1_);
    for (const QString& folder :
         {QLibraryInfo::path(QLibraryInfo::TranslationsPath), QCoreApplication::applicationDirPath() + "/translations"})
        if (chinese_.load("qtbase_zh_CN", folder)) break;
    QCoreApplication::installTranslator(&chinese_);
    program_.listeners.property_changed = [this](const Control& control, Property property) {
        recorder_.model_changed(control, property);
        mirror_.changed(control, property);
    };
    program_.listeners.pane_edited = [this](const Control& pane, const Selection& replaced, TextView text) {
        recorder_.pane_edited(pane, replaced, text);
    };
    dialogs_.set_surroundings(
        {[this] { show_ahead_of_box(); }, [this] { return form1_.pane_on_screen(); },
         [this] {
             // The installation folder and where the last run's files went.
             return QStringList{to_qt(program_.platform.files.installation_folder()), output_folder(program_)};
         }});
    form1_.file_dropped = [this](const QString& path) { open(path); };
    form1_.column_picked = [this](int column) { form3_.put_number(column); };
    growth_.setInterval(growth_milliseconds);
    QObject::connect(&growth_, &QTimer::timeout, &form1_, [this] { follow_file(); });
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &form1_, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive && !look_) apply_look();
    });
    screen_.set_work({[this] { show(); }, [this](double part) { form1_.progress().show_work(part); },
                      [this] {
                          if (!player_.plays()) context_menu_.ask();
                      }});
}

void Desktop::start(const Text& notice)
{
    queue_.submit([this, notice] {
        tarvik::start(program_);
        form1_.fit_to_screen(form1_.screen()->availableGeometry().size());
        QApplication::setFont(theme_.font(font_role::dialog, form1_.scale())); // of all that is the toolkit's own
        recorder_.remember_opening();
        if (!notice.empty()) tell(program_, notice, application_title, Icon::Exclamation);
    });
}

void Desktop::open(const QString& path)
{
    dialogs_.open_next(path);
    form1_.press(program_.form1.Command1[0]);
    queue_.submit([this] { dialogs_.open_next({}); }); // no later question is answered by it
}

void Desktop::apply_look()
{
    const Look look = look_ ? *look_ : system_look();
    const bool is_first = !std::exchange(look_is_applied_, true);
    if (!is_first && look == theme_.look()) return;
    theme_.apply(look);
    if (is_first) return; // nothing shows yet
    mirror_.all_changed();
    queue_.submit([] {});
}

// A file that has grown is opened anew, as the user would, and shows its end. Nothing else is disturbed for it.
void Desktop::follow_file()
{
    const Text& path = program_.opened.path;
    const Form1& form1 = program_.form1;
    if (path.empty() || queue_.busy() || form1.dbresult || !form1.RichTextBox2.visible() ||
        run_in_progress(program_.form1))
        return;
    const QString file = real_path(files_, path);
    const bool is_known = std::exchange(followed_, file) == file;
    const qint64 before = std::exchange(size_, QFileInfo(file).size());
    if (!is_known || size_ <= before) return;
    open(file);
    if (TextWidget* const pane = form1_.shown_pane()) pane->show_place(pane->area().lines().size());
}

// The windows go before what they tell of.
Desktop::~Desktop()
{
    queue_.close();
    program_.listeners.property_changed = nullptr;
    program_.listeners.pane_edited = nullptr;
    QCoreApplication::removeTranslator(&chinese_);
}

void Desktop::show()
{
    mirror_.update();
    form1_.show_state();
    form3_.show_headings();
    if (!program_.notice.empty()) form1_.status().show_notice(to_qt(std::exchange(program_.notice, {})));
    show_run();
}

// The box may be the one that tells of the failure.
void Desktop::show_ahead_of_box() noexcept
{
    try {
        show();
    } catch (const std::exception& error) {
        std::cerr << "tarvik: " << error.what() << '\n';
    }
}

void Desktop::event_ended()
{
    screen_.end_progress();
    show();
    tasks_.show_state();
    const bool says_something = !program_.run.files.empty() || program_.run.stopped;
    if (!runs_ && says_something && told_ != saved()) { // by a command that was done at once, or did not begin
        stopped_ = false;
        show_run_end();
    }
    context_menu_.open_if_asked();
    if (!program_.ended) return;
    tasks_.end();
    QCoreApplication::quit();
}

void Desktop::show_run()
{
    Form1& form1 = program_.form1;
    const bool runs = run_in_progress(form1), is_batch = runs && form1.keycount > 0;
    form1_.progress().show_batch(is_batch ? static_cast<double>(form1.sheetno - 1) / form1.keycount : -1);
    stopped_ = runs ? program_.run.stop_wished : stopped_;
    form1_.status().show_run(runs ? run_text(program_) : QString());
    if (std::exchange(runs_, runs) && !runs) show_run_end();
}

void Desktop::show_run_end()
{
    told_ = saved();
    form1_.status().show_end(run_end(program_, stopped_, dialogs_.last_told()));
    QApplication::alert(&form1_);
}

} // namespace tarvik
