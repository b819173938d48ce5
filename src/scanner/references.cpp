#include "scanner/references.h"

#include "runtime/report.h"
#include "scanner/char_reference.h"
#include "text/char_classes.h"
#include "text/temporaries.h"

namespace qvox {

int References::read_reference(int c, bool* isCharRef) {
    const std::size_t start = token.length();
    if (c != '&' && c != '%') return c;
    token.append_char(c);
    return c == '&' ? read_general_reference(start, isCharRef) : read_parameter_reference(start);
}

int References::read_general_reference(std::size_t start, bool* isCharRef) {
    const int c = read_and_append();
    if (c == '#') {
        if (isCharRef != nullptr) *isCharRef = true;
        return read_character_reference(start);
    }
    if (!is_name_start(c)) reference_error("illegal entity reference", start);
    read_entity_name(start, "illegal reference");
    return first_character_of(token.text() + start + 1, start);
}

int References::read_parameter_reference(std::size_t start) {
    if (!is_name_start(read_and_append())) {
        reference_error("illegal parameter entity reference", start);
    }
    read_entity_name(start, "illegal parameter reference");
    return first_character_of(token.text() + start, start);
}

// What is looked at belongs to the token, for messages. The end of the input is no part of it.
int References::read_and_append() {
    const int c = input.curGetc();
    if (c != END_OF_INPUT) token.append_char(c);
    return c;
}

// Behind "&#", up to and with the ';'.
int References::read_character_reference(std::size_t start) {
    CharReference number;
    int c = input.curGetc();
    for (; number.take(c); c = input.curGetc()) token.append_char(c);
    if (c != ';' || !number.has_number()) reference_error("illegal character reference", start);
    if (!number.is_character()) reference_error("illegal character reference value", start);
    token.shorten_to(start);
    return number.value();
}

// Reads the rest of an entity's name up to the ';' behind it, which isn't appended.
void References::read_entity_name(std::size_t start, const char* unterminated) {
    int c = input.curGetc();
    for (; is_name_char(c); c = input.curGetc()) token.append_char(c);
    if (c != ';') reference_error(unterminated, start);
    token.terminate();
}

int References::first_character_of(const Unit* name, std::size_t start) {
    push_entity(name);
    token.shorten_to(start);
    return input.curGetc();
}

// Pushes the entity's replacement text or file. A name without declaration, and a file that can't
// be opened, are warnings; these, an entity with a public identifier and one without any text stand
// for nothing. A parameter entity's name begins with '%'.
void References::push_entity(const Unit* name) {
    const EntityRecord* entity = dtd.find_entity_decl(name);
    if (entity == nullptr) {
        input.expansion.count(weight::WARNING + wide_length(name));
        qvox_report(REPORT_WARNING, QVOXException::INVALID_ENTITY_REF_ERR,
                    "entity name (%s) not found", OsTemp(name).get());
    } else if (entity->value != nullptr) {
        input.push_entity_text(entity->name, entity->value);
    } else if (entity->publicId == nullptr && entity->systemId != nullptr) {
        push_external(*entity);
    }
}

void References::push_external(const EntityRecord& entity) {
    std::unique_ptr<ByteStream> file = open_external(entity.systemId);
    if (file == nullptr) return;
    const bool isRepeated = dtd.was_read_before(*file);
    input.push_external_entity(entity.name, std::move(file), isRepeated);
}

std::unique_ptr<ByteStream> References::open_external(const Unit* systemId) {
    const OsTemp path(systemId);
    std::unique_ptr<ByteStream> file = externalFiles ? open_external_id(path.get()) : nullptr;
    if (file == nullptr) {
        input.expansion.count(weight::WARNING + wide_length(systemId));
        qvox_report(REPORT_WARNING, QVOXException::FILE_OPEN_ERR, "system id (%s) can't open",
                    path.get());
    }
    return file;
}

void References::reference_error(const char* message, std::size_t start) const {
    errors.lex_error(QVOXException::INVALID_ENTITY_REF_ERR, message, start);
}

}  // namespace qvox
