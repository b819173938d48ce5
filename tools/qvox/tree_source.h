// The nodes of a tree, passed on to a sink.
#pragma once

#include <qvox/qvox.h>

#include "document_sink.h"

// Passes a parsed document on, but for its XML declaration. The literals are those of its document
// type. Lets what the sink throws through.
void pass_tree(qvox::Document& document, const Literals& literals, DocumentSink& sink);
