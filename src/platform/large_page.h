// Memory in pages of the largest useful size, for what grows far beyond the standard heap's own
// units: the system hands such a page out at once, where it would hand out hundreds of small ones.
#pragma once

#include <cstddef>

namespace qvox {

// A page and its alignment.
constexpr std::size_t LARGE_PAGE = std::size_t{2} << 20U;

// A page, not cleared; null where there is none. Systems without large pages give plain memory.
void* take_large_page();
void release_large_page(void* page);

}  // namespace qvox
