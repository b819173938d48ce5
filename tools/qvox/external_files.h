// The switch that keeps a parse from opening the files that a document names.
#pragma once

#include <qvox/qvox.h>

// Makes the parser, which is of either kind, open nothing but the document. Throws
// std::runtime_error where the library can't.
void refuse_external_files(qvox::Parser& parser);
