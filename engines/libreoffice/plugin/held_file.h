#pragma once

#include "engines/libreoffice/plugin/uno_values.h"

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace tarvik::libreoffice {

using Model = css::uno::Reference<css::frame::XModel>;

std::string filter_of(const Model& model);
void store_copy(const Model& model, const std::filesystem::path& path, const std::string& filter);
Printing print_model(const Model& model, const std::string& printer);
void calculate_model(const Model& model);
void close_model(const Model& model) noexcept;

/// What every kind of open file does alike; `Kind` is OpenFile or one of its kinds.
template <typename Kind>
class HeldFile : public Kind {
public:
    explicit HeldFile(const Model& model) : model_(model) {}
    ~HeldFile() override { close_model(model_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    void store(const std::filesystem::path& path, const std::string& filter) override
    {
        translated([&] { store_copy(model_, path, filter); });
    }
    void calculate_all() override
    {
        translated([&] { calculate_model(model_); });
    }
    Printing print(const std::string& printer) override
    {
        return translated([&] { return print_model(model_, printer); });
    }

protected:
    const Model& model() const { return model_; }

private:
    Model model_;
};

/// A null pointer where the model is none of that kind.
std::unique_ptr<OpenWorkbook> hold_workbook(const Model& model);
std::unique_ptr<OpenDocument> hold_document(const Model& model,
                                            const css::uno::Reference<css::uno::XComponentContext>& context);

} // namespace tarvik::libreoffice
