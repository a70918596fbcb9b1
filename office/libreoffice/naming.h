#pragma once

#include "office/libreoffice/trouble.h"

#include <new>

namespace tarvik::libreoffice {

/// Does work on a file; what goes wrong becomes a Failure that names it: "无法处理<kind>“<path>”：<reason>".
template <typename Work>
decltype(auto) naming(TextView kind, TextView path, Work&& work)
{
    const auto failure = [&](TextView reason) {
        return Failure(U"无法处理" + kind.str() + U"“" + path.str() + U"”：" + reason.str());
    };
    try {
        return work();
    } catch (const Trouble& trouble) {
        throw failure(trouble.reason());
    } catch (const std::bad_alloc&) {
        throw failure(U"内存不足。");
    }
}

/// What follows the last separator of a path.
TextView file_name_of(TextView path);
/// From the last point of the file name; empty without one.
TextView extension_of(TextView path);

} // namespace tarvik::libreoffice
