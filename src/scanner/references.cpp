#include "scanner/references.h"

#include "input/decoders.h"
#include "input/input_stack.h"
#include "runtime/report.h"
#include "scanner/dtd_actions.h"
#include "scanner/scanner_error.h"
#include "scanner/token_buffer.h"
#include "text/char_classes.h"
#include "text/temporaries.h"

namespace qvox {

namespace {

constexpr int NO_DIGIT = -1;
constexpr long long LARGEST_CHARACTER = 0x10FFFF;

[[noreturn]] void reference_error(const char* message, std::size_t start) {
    lex_error(QVOXException::INVALID_ENTITY_REF_ERR, message, start);
}

int read_and_append() {
    const int c = curGetc();
    append_char(c);
    return c;
}

int digit_value(int c, int base) {
    if (c >= '0' && c <= '9') return c - '0';
    if (base == 16 && c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (base == 16 && c >= 'a' && c <= 'f') return c - 'a' + 10;
    return NO_DIGIT;
}

// Behind "&#", up to and with the ';'. A number that is too large stays so: it isn't a character.
int read_character_reference(std::size_t start) {
    int base = 10;
    int c = curGetc();
    if (c == 'x') {
        append_char(c);
        base = 16;
        c = curGetc();
    }
    long long number = 0;
    bool hasDigits = false;
    for (; digit_value(c, base) != NO_DIGIT; c = curGetc()) {
        append_char(c);
        hasDigits = true;
        if (number <= LARGEST_CHARACTER) number = number * base + digit_value(c, base);
    }
    if (c != ';' || !hasDigits) reference_error("illegal character reference", start);
    if (!is_xml_char(number)) reference_error("illegal character reference value", start);
    tokenLen = start;
    return static_cast<int>(number);
}

// Reads the rest of an entity's name up to the ';' behind it, which isn't appended.
void read_entity_name(std::size_t start, const char* unterminated) {
    int c = curGetc();
    for (; is_name_char(c); c = curGetc()) append_char(c);
    if (c != ';') reference_error(unterminated, start);
    terminated_token();
}

int first_character_of(const Unit* name, std::size_t start) {
    push_entity(name);
    tokenLen = start;
    return curGetc();
}

int read_general_reference(std::size_t start, bool* isCharRef) {
    const int c = read_and_append();
    if (c == '#') {
        if (isCharRef != nullptr) *isCharRef = true;
        return read_character_reference(start);
    }
    if (!is_name_start(c)) reference_error("illegal entity reference", start);
    read_entity_name(start, "illegal reference");
    return first_character_of(tokenText + start + 1, start);
}

int read_parameter_reference(std::size_t start) {
    if (!is_name_start(read_and_append())) {
        reference_error("illegal parameter entity reference", start);
    }
    read_entity_name(start, "illegal parameter reference");
    return first_character_of(tokenText + start, start);
}

void push_external(const EntityRecord& entity) {
    if (entity.publicId != nullptr || entity.systemId == nullptr) return;
    const OsTemp path(entity.systemId);
    std::unique_ptr<ByteStream> file = open_system_id(path.get());
    if (file == nullptr) {
        qvox_report(REPORT_WARNING, QVOXException::FILE_OPEN_ERR, "system id (%s) can't open",
                    path.get());
        return;
    }
    const bool isRepeated = was_read_before(*file);
    push_external_entity(entity.name, std::move(file), isRepeated);
}

}  // namespace

int read_reference(int c, bool* isCharRef) {
    const std::size_t start = tokenLen;
    if (c != '&' && c != '%') return c;
    append_char(c);
    return c == '&' ? read_general_reference(start, isCharRef) : read_parameter_reference(start);
}

void push_entity(const Unit* name) {
    const EntityRecord* entity = find_entity_decl(name);
    if (entity == nullptr) {
        qvox_report(REPORT_WARNING, QVOXException::INVALID_ENTITY_REF_ERR,
                    "entity name (%s) not found", OsTemp(name).get());
    } else if (entity->value != nullptr) {
        push_entity_text(entity->name, entity->value);
    } else {
        push_external(*entity);
    }
}

}  // namespace qvox
