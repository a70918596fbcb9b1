#include "engines/libreoffice/plugin/held_file.h"

#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/io/IOException.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

namespace tarvik::libreoffice {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using Context = Reference<css::uno::XComponentContext>;

namespace {

/// Does work with LibreOffice's objects; its exceptions become those of the bridge.
void translated(const std::function<void()>& work)
{
    try {
        work();
    } catch (const css::lang::DisposedException& gone) {
        throw ConnectionLost(to_bytes(gone.Message));
    } catch (const css::uno::Exception& refused) {
        throw std::runtime_error(to_bytes(refused.Message));
    }
}

class OfficeConnection final : public Connection {
public:
    explicit OfficeConnection(const Context& context)
        : context_(context),
          desktop_(context_->getServiceManager()->createInstanceWithContext("com.sun.star.frame.Desktop", context_),
                   css::uno::UNO_QUERY_THROW)
    {
    }

    std::unique_ptr<OpenFile> open(const std::filesystem::path& path) override
    {
        const Model model = load(path);
        if (!model.is()) return nullptr;
        if (std::unique_ptr<OpenFile> workbook = hold_workbook(model)) return workbook;
        if (std::unique_ptr<OpenFile> document = hold_document(model, context_)) return document;
        return std::make_unique<HeldFile<OpenFile>>(model);
    }

    void perform(const std::function<void()>& work) override { translated(work); }

private:
    // Neither macros nor links run: the file is to be read, not obeyed.
    Model load(const std::filesystem::path& path)
    {
        try {
            return Model(desktop_->loadComponentFromURL(
                             file_url(path), "_blank", 0,
                             properties({property("Hidden", true),
                                         property("UpdateDocMode", css::document::UpdateDocMode::NO_UPDATE)})),
                         UNO_QUERY);
        } catch (const css::lang::IllegalArgumentException&) {
            return {}; // no type of file that it knows
        } catch (const css::io::IOException&) {
            return {}; // damaged, or behind a password
        }
    }

    Context context_;
    Reference<css::frame::XComponentLoader> desktop_;
};

class UnoPlugin final : public Plugin {
public:
    std::filesystem::path program_folder() const override { return TARVIK_LIBREOFFICE_PROGRAM; }

    std::unique_ptr<Connection> connect(const std::string& pipe) override
    {
        std::unique_ptr<Connection> connection;
        translated([&] {
            if (!own_context_.is()) {
                rtl::Bootstrap::set("URE_MORE_TYPES", file_url(program_folder() / "types/offapi.rdb"));
                own_context_ = cppu::defaultBootstrap_InitialComponentContext();
                resolver_ = css::bridge::UnoUrlResolver::create(own_context_);
            }
            try {
                const Context context(
                    resolver_->resolve(to_uno("uno:pipe,name=" + pipe + ";urp;StarOffice.ComponentContext")),
                    UNO_QUERY);
                if (context.is()) connection = std::make_unique<OfficeConnection>(context);
            } catch (const css::connection::NoConnectException&) { // NOLINT(bugprone-empty-catch): none listens yet
            }
        });
        return connection;
    }

private:
    Context own_context_;
    Reference<css::bridge::XUnoUrlResolver> resolver_;
};

} // namespace

} // namespace tarvik::libreoffice

extern "C" __attribute__((visibility("default"))) tarvik::libreoffice::Plugin* tarvik_libreoffice_plugin()
{
    static tarvik::libreoffice::UnoPlugin plugin;
    return &plugin;
}
