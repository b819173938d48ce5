// Blocks of text that strings share: the units with a NUL, and in front of them who holds the
// block. A block is changed only by a sole holder, so that holders may be in different threads.
#pragma once

#include <cstddef>

#include "text/wide.h"

namespace qvox::text_block {

// A block with room for `capacity` units and the NUL, none of them set, with one holder. Raises
// std::bad_alloc.
Unit* make(std::size_t capacity);

// One holder more, and one less: the last one frees the block.
void hold(const Unit* text) noexcept;
void drop(const Unit* text) noexcept;

// The units for writing, if the caller is the sole holder and the block has room for `length`; else
// null.
Unit* writable(const Unit* text, std::size_t length) noexcept;

}  // namespace qvox::text_block
