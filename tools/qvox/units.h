// Text in the library's 16-bit units.
#pragma once

#include <string>
#include <string_view>

#include <qvox/xstring.h>

using Units = std::basic_string<unsigned short, qvox::UnitTraits>;
using UnitView = std::basic_string_view<unsigned short, qvox::UnitTraits>;
