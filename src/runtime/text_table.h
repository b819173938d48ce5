// A hash table of texts, each of which is there once, with what its owner knows of it. An entry has
// three members for the table: `text`, an Xstring, `hash` and `next`. The owner makes the entries
// and frees them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "text/wide.h"

namespace qvox {

// Hashes of all of a text, which differ from process to process and table to table, so that no
// document can be made whose names all fall into one bucket.
class TextHash {
public:
    TextHash() : seed(seed_from(this)) {}

    std::uint32_t operator()(const Unit* text, std::size_t length) const {
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

private:
    static std::uint64_t seed_from(const void* address) {
        static const int anywhere = 0;
        const auto tableAddress = reinterpret_cast<std::uintptr_t>(address);
        const auto libraryAddress = reinterpret_cast<std::uintptr_t>(&anywhere);
        return (tableAddress * 0x9E3779B97F4A7C15U) ^ (std::uint64_t{libraryAddress} << 17);
    }

    static std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
        hash = (hash ^ word) * 0xD6E8FEB86659FD93U;
        return hash ^ (hash >> 32);
    }

    std::uint64_t seed;
};

template <typename Entry>
class TextTable {
public:
    TextTable() : buckets(FIRST_BUCKETS, nullptr) {}
    TextTable(const TextTable&) = delete;
    TextTable& operator=(const TextTable&) = delete;

    std::uint32_t hash_of(const Unit* text, std::size_t length) const { return hash(text, length); }

    std::size_t size() const { return count; }

    // The entry of a text with its hash, or null.
    Entry* find(const Unit* text, std::size_t length, std::uint32_t hashOfText) const {
        Entry* entry = buckets[bucket_of(hashOfText)];
        for (; entry != nullptr; entry = entry->next) {
            if (entry->hash == hashOfText &&
                static_cast<std::size_t>(entry->text.length()) == length &&
                std::memcmp(entry->text.data(), text, length * sizeof(Unit)) == 0) {
                break;
            }
        }
        return entry;
    }

    // Enters a text that isn't there yet. May raise std::bad_alloc, and nothing is entered then.
    void enter(Entry& entry) {
        if (count == buckets.size()) grow();
        link(entry);
        ++count;
    }

    // Calls `visit` with each entry, which may free it.
    template <typename Visit>
    void visit_all(Visit visit) const {
        for (Entry* entry : buckets) {
            while (entry != nullptr) {
                Entry* const following = entry->next;
                visit(entry);
                entry = following;
            }
        }
    }

private:
    static constexpr std::size_t FIRST_BUCKETS = 64;

    std::size_t bucket_of(std::uint32_t hashOfText) const {
        return hashOfText & (buckets.size() - 1);
    }

    void link(Entry& entry) {
        Entry*& bucket = buckets[bucket_of(entry.hash)];
        entry.next = bucket;
        bucket = &entry;
    }

    void grow() {
        const std::vector<Entry*> before =
            std::exchange(buckets, std::vector<Entry*>(2 * buckets.size(), nullptr));
        for (Entry* entry : before) {
            while (entry != nullptr) {
                Entry* const following = entry->next;
                link(*entry);
                entry = following;
            }
        }
    }

    TextHash hash;
    std::size_t count = 0;
    std::vector<Entry*> buckets;  // a power of two
};

}  // namespace qvox
