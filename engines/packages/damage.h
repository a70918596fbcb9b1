#pragma once

#include "platform/failure.h"

#include <new>
#include <string_view>

namespace tarvik::ooxml {

/// What is wrong with a package or with a wish to change it, in Chinese. It does not know the file's name.
class Damage : public Failure {
public:
    using Failure::Failure;
};

/// A name out of a package as a message shows it.
inline Text in_quotes(std::string_view name)
{
    return U"“" + from_utf8(name) + U"”";
}

/// Does work on a file; what goes wrong becomes a Failure that names it. `kind` is what the user calls such a file.
template <typename Work>
decltype(auto) naming_file(TextView kind, TextView path, Work&& work)
{
    const auto failure = [kind, path](TextView reason) {
        return Failure(U"无法处理" + kind.str() + U"“" + path.str() + U"”：" + reason.str());
    };
    try {
        return work();
    } catch (const Damage& damage) {
        throw failure(damage.message());
    } catch (const std::bad_alloc&) {
        throw failure(U"内存不足。");
    }
}

} // namespace tarvik::ooxml
