// Searches for elements. The caller holds the lock of the document.
#pragma once

#include <qvox/dom.h>

namespace qvox {

// The elements that match below `root`, which is itself looked at only where it is the document's
// own element and `context` the document. In the result list of `context`. A null root raises.
NodeList* search_tag_name(Node& context, Node* root, const Xstring& name);
NodeList* search_tag_name_ns(Node& context, Node* root, const Xstring& namespaceURI,
                             const Xstring& localName);

// The first element at or below `root` with an attribute of the declared type ID and that value.
Element* search_id(Node* root, const Xstring& elementId);

}  // namespace qvox
