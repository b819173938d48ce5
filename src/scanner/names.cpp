#include "scanner/names.h"

#include <cstring>

namespace qvox {

namespace {

constexpr std::size_t FIRST_BUCKETS = 64;
constexpr Unit XMLNS[] = {'x', 'm', 'l', 'n', 's', 0};

// Differs from process to process and parse to parse, so that no document can be made whose names
// all fall into one bucket.
std::uint64_t seed_from(const void* address) {
    static const int anywhere = 0;
    const auto heapAddress = reinterpret_cast<std::uintptr_t>(address);
    const auto libraryAddress = reinterpret_cast<std::uintptr_t>(&anywhere);
    return (heapAddress * 0x9E3779B97F4A7C15U) ^ (libraryAddress << 17);
}

std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 0xD6E8FEB86659FD93U;
    return hash ^ (hash >> 32);
}

}  // namespace

Names::Names(Heap& parseHeap)
    : heap(parseHeap),
      seed(seed_from(this)),
      buckets(FIRST_BUCKETS, nullptr),
      xmlnsName(&keep_in_place(XMLNS, sizeof XMLNS / sizeof XMLNS[0] - 1)) {}

Name& Names::keep(const Unit* text, std::size_t length) {
    const std::uint32_t hash = hash_of(text, length);
    Name* known = find(text, length, hash);
    return known != nullptr ? *known : enter(heap.halloc_copy(text, length), length, hash);
}

Name& Names::keep_in_place(const Unit* text, std::size_t length) {
    const std::uint32_t hash = hash_of(text, length);
    Name* known = find(text, length, hash);
    return known != nullptr ? *known : enter(text, length, hash);
}

void Names::find_parts(Name& name) {
    const Unit* text = name.units();
    const Unit* colon = wide_find_unit(text, ':');
    if (colon == nullptr) {
        name.localPart = &name;
        return;
    }
    const auto prefixLength = static_cast<std::size_t>(colon - text);
    if (prefixLength != 0) name.prefix = &keep(text, prefixLength);
    const auto length = static_cast<std::size_t>(name.text.length());
    name.localPart = &keep_in_place(colon + 1, length - prefixLength - 1);
}

std::uint32_t Names::hash_of(const Unit* text, std::size_t length) const {
    constexpr std::size_t UNITS_PER_WORD = sizeof(std::uint64_t) / sizeof(Unit);
    std::uint64_t hash = mixed(seed, length);
    for (; length >= UNITS_PER_WORD; length -= UNITS_PER_WORD, text += UNITS_PER_WORD) {
        std::uint64_t word = 0;
        std::memcpy(&word, text, sizeof word);
        hash = mixed(hash, word);
    }
    std::uint64_t rest = 0;
    for (std::size_t i = 0; i < length; ++i) rest = rest << 16 | text[i];
    return static_cast<std::uint32_t>(mixed(hash, rest) >> 16);
}

Name* Names::find(const Unit* text, std::size_t length, std::uint32_t hash) const {
    Name* name = buckets[hash & (buckets.size() - 1)];
    for (; name != nullptr; name = name->next) {
        if (name->hash == hash && static_cast<std::size_t>(name->text.length()) == length &&
            std::memcmp(name->units(), text, length * sizeof(Unit)) == 0) {
            break;
        }
    }
    return name;
}

Name& Names::enter(const Unit* keptText, std::size_t length, std::uint32_t hash) {
    if (count == buckets.size()) grow();
    Name*& bucket = buckets[hash & (buckets.size() - 1)];
    bucket = new (heap.halloc(sizeof(Name), alignof(Name)))
        Name(lent_text(keptText, length), hash, bucket);
    ++count;
    return *bucket;
}

void Names::grow() {
    std::vector<Name*> larger(2 * buckets.size(), nullptr);
    for (Name* name : buckets) {
        while (name != nullptr) {
            Name* following = name->next;
            Name*& bucket = larger[name->hash & (larger.size() - 1)];
            name->next = bucket;
            bucket = name;
            name = following;
        }
    }
    buckets.swap(larger);
}

}  // namespace qvox
