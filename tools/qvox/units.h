// Text in the library's 16-bit units.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <qvox/xstring.h>

using Units = std::basic_string<unsigned short, qvox::UnitTraits>;
using UnitView = std::basic_string_view<unsigned short, qvox::UnitTraits>;

// Empty for a null string too.
inline UnitView view_of(const qvox::Xstring& text) {
    return {text.data(), static_cast<std::size_t>(text.length())};
}
