// Namespace declarations and the names they resolve. No prefix has a built-in binding, and an
// undeclared one is no error.
#pragma once

#include "scanner/document_actions.h"

namespace qvox {

// Forgets all declarations.
void namespaces_start();

// Marks the namespace declarations among the tag's attributes and, with `namespaces`, puts them in
// force. The first declaration of a prefix in a tag binds.
void collect_namespace_decls(TagRecord& tag, bool namespaces);

// The tag's element has ended, and its declarations with it.
void leave_namespace_decls(const TagRecord& tag);

// Set the local name and, where a declaration is in force, the URI. An attribute without prefix has
// no namespace.
void resolve_element(TagRecord& tag);
void resolve_attribute(AttributeRecord& attribute);

}  // namespace qvox
