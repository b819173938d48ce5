// Whether a document that was written and read again is what it was.
#pragma once

#include <functional>
#include <string>

#include <qvox/qvox.h>

// Whether a character counts as unchanged where a question mark has taken its place.
using IsReplaced = std::function<bool(char32_t character)>;

// The first difference in document order, as in `comment: data "\r" as "\n"`; empty if there is
// none. Null and empty data are the same; the children of a document type, which aren't written,
// don't count.
std::string first_difference(qvox::Document& original, qvox::Document& copy,
                             const IsReplaced& isReplaced);
