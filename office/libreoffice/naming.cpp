#include "office/libreoffice/naming.h"

namespace tarvik::libreoffice {

TextView file_name_of(TextView path)
{
    std::size_t start = path.size();
    while (start > 0 && path[start - 1] != U'\\' && path[start - 1] != U'/') --start;
    return path.substr(start);
}

TextView extension_of(TextView path)
{
    const auto name = file_name_of(path);
    const auto point = name.rfind(U'.');
    return point == npos ? TextView() : name.substr(point);
}

} // namespace tarvik::libreoffice
