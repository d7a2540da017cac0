/// The text type of the whole system: UTF-16 units. Lengths and positions count units.
#pragma once

#include <string>
#include <string_view>

namespace mova {

using WString = std::u16string;
using WStringView = std::u16string_view;

}  // namespace mova
