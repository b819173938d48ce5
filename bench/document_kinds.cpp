#include "document_kinds.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "random_text.h"

namespace bench {
namespace {

// Records.

struct RecordNames {
    const char* item;
    const char* id;
    const char* group;
    const char* place;
    const char* name;
    const char* price;
    const char* currency;
    const char* count;
    const char* added;
};

constexpr RecordNames shortNames = {"item",  "id",       "group", "place", "name",
                                    "price", "currency", "count", "added"};
constexpr RecordNames longNames = {"catalogue-item",  "identification",   "merchandise-group",
                                   "warehouse-place", "merchandise-name", "price-per-unit",
                                   "price-currency",  "units-in-stock",   "date-of-addition"};

struct RecordForm {
    RecordNames names = shortNames;
    /// In front of each record and of what is in it.
    std::u16string_view lineEnd;
    std::u16string_view recordIndent;
    std::u16string_view fieldIndent;
};

/// As if records had no indentation and short names, so that each form has the same ones.
constexpr std::size_t sizeOfRecord = 170;

void appendRecord(DocumentBuilder& builder, Random& random, const RecordForm& form,
                  unsigned number) {
    const RecordNames& names = form.names;
    const auto lineBreak = [&builder, &form](std::u16string_view indent) {
        builder.text(form.lineEnd).text(indent);
    };
    lineBreak(form.recordIndent);
    builder.openTag(names.item);
    builder.attribute(names.id, u"i" + decimal(number, 7));
    builder.attribute(names.group, u"g" + decimal(random.below(90), 2));
    builder.attribute(names.place, decimal(random.below(400), 3)).closeTag();
    lineBreak(form.fieldIndent);
    builder.element(names.name, phrase(random, random.between(1, 3)));
    lineBreak(form.fieldIndent);
    builder.openTag(names.price).attribute(names.currency, u"JPY").closeTag();
    builder.text(decimal(random.between(80, 90000), 1)).endTag(names.price);
    lineBreak(form.fieldIndent);
    builder.element(names.count, decimal(random.below(200), 1));
    lineBreak(form.fieldIndent);
    const std::u16string month = decimal(random.between(1, 12), 2);
    builder.openTag(names.added).attribute("month", month).closeEmptyTag();
    lineBreak(form.recordIndent);
    builder.endTag(names.item);
}

void appendRecords(DocumentBuilder& builder, std::size_t size, const RecordForm& form) {
    Random random;
    builder.openTag("catalogue").closeTag();
    for (unsigned number = 1; number <= size / sizeOfRecord; ++number) {
        appendRecord(builder, random, form, number);
    }
    builder.text(form.lineEnd).endTag("catalogue");
}

constexpr RecordForm indentedForm = {shortNames, u"\n", u"  ", u"    "};

void generateBareRecords(DocumentBuilder& builder, std::size_t size) {
    appendRecords(builder, size, {});
}

void generateRecords(DocumentBuilder& builder, std::size_t size) {
    appendRecords(builder, size, indentedForm);
}

void generateCrLfRecords(DocumentBuilder& builder, std::size_t size) {
    builder.useCrLf();
    appendRecords(builder, size, indentedForm);
}

void generateLongNames(DocumentBuilder& builder, std::size_t size) {
    appendRecords(builder, size, {longNames, {}, {}, {}});
}

// Books.

using AppendSentence = void (*)(std::u16string& text, Random& random);

void appendChapters(DocumentBuilder& builder, std::size_t size, AppendSentence appendOne,
                    std::size_t longestParagraph) {
    Random random;
    const auto paragraph = [&random, appendOne](std::size_t length) {
        std::u16string text;
        while (text.size() < length) appendOne(text, random);
        return text;
    };
    builder.openTag("book").closeTag();
    for (unsigned chapter = 1; builder.bytes().size() < size; ++chapter) {
        builder.text(u"\n").openTag("chapter").attribute("number", decimal(chapter, 1)).closeTag();
        builder.text(u"\n").element("title", paragraph(10));
        for (unsigned i = 0; i < 8 && builder.bytes().size() < size; ++i) {
            // Most paragraphs are far shorter than the longest.
            const std::size_t length = longestParagraph / random.between(1, 16);
            builder.text(u"\n").element("p", paragraph(length));
        }
        builder.text(u"\n").endTag("chapter");
    }
    builder.text(u"\n").endTag("book");
}

void generateProse(DocumentBuilder& builder, std::size_t size) {
    appendChapters(builder, size, appendSentence, 16000);
}

void generateJapanese(DocumentBuilder& builder, std::size_t size) {
    appendChapters(builder, size, appendJapaneseSentence, 160);
}

// Namespaces.

constexpr unsigned vocabularyCount = 16;

std::string prefixed(unsigned vocabulary, const char* name) {
    return "v" + std::to_string(vocabulary) + ":" + name;
}

void appendEntry(DocumentBuilder& builder, Random& random, unsigned number) {
    const auto any = [&random](const char* name) {
        return prefixed(random.below(vocabularyCount), name);
    };
    const std::string entry = any("entry");
    const std::string value = any("value");
    builder.text(u"\n").openTag(entry);
    builder.declareNamespace("xmlns:own", "urn:example:own:" + std::to_string(number % 7));
    builder.attribute(any("id"), decimal(number, 7)).attribute("own:kind", u"plain").closeTag();
    builder.openTag("part").declareNamespace("xmlns", "urn:example:part").closeTag();
    builder.element("name", phrase(random, 2)).element("own:name", phrase(random, 1));
    builder.endTag("part");
    builder.openTag(value).attribute(any("unit"), u"mm").closeTag();
    builder.text(decimal(random.below(5000), 1)).endTag(value);
    builder.openTag(any("mark")).closeEmptyTag().endTag(entry);
}

void generateNamespaces(DocumentBuilder& builder, std::size_t size) {
    Random random;
    builder.openTag("all");
    for (unsigned i = 0; i < vocabularyCount; ++i) {
        const std::string prefix = "v" + std::to_string(i);
        builder.declareNamespace("xmlns:" + prefix, "urn:example:vocabulary:" + prefix);
    }
    builder.closeTag();
    for (unsigned number = 1; builder.bytes().size() < size; ++number) {
        appendEntry(builder, random, number);
    }
    builder.text(u"\n").endTag("all");
}

// Lines that are full of one thing.

using AppendLine = void (*)(DocumentBuilder& builder, Random& random);

void appendLines(DocumentBuilder& builder, std::size_t size, AppendLine appendOne) {
    Random random;
    builder.openTag("lines").closeTag();
    while (builder.bytes().size() < size) {
        builder.text(u"\n");
        appendOne(builder, random);
    }
    builder.text(u"\n").endTag("lines");
}

template <AppendLine appendOne>
void generateLines(DocumentBuilder& builder, std::size_t size) {
    appendLines(builder, size, appendOne);
}

struct Reference {
    const char* name;
    std::u16string_view content;
};
constexpr std::array<Reference, 6> references = {{{"amp", u"&"},
                                                  {"lt", u"<"},
                                                  {"#65", u"A"},
                                                  {"quot", u"\""},
                                                  {"#x3042", u"\u3042"},
                                                  {"gt", u">"}}};

const Reference& anyReference(Random& random) {
    return references[random.below(static_cast<unsigned>(references.size()))];
}

void appendReferences(DocumentBuilder& builder, Random& random) {
    builder.openTag("line").closeTag();
    for (int i = 0; i < 8; ++i) {
        const Reference& one = anyReference(random);
        builder.text(phrase(random, 2)).reference(one.name, one.content);
    }
    builder.endTag("line");
}

void appendValueReferences(DocumentBuilder& builder, Random& random) {
    builder.openTag("line");
    for (const char* const name : {"title", "author", "place"}) {
        std::u16string value;
        std::u16string written;
        for (int i = 0; i < 3; ++i) {
            const Reference& one = anyReference(random);
            const std::u16string words = phrase(random, 2);
            const std::string_view referenceName = one.name;
            value += words + std::u16string(one.content);
            written +=
                words + u"&" + std::u16string(referenceName.begin(), referenceName.end()) + u";";
        }
        builder.attribute(name, value, written);
    }
    builder.closeEmptyTag();
}

void appendComment(DocumentBuilder& builder, Random& random) {
    builder.comment(u" " + phrase(random, random.between(4, 20)) + u" ");
    if (random.below(4) == 0) builder.element("line", phrase(random, 2));
}

void appendCdataSection(DocumentBuilder& builder, Random& random) {
    builder.openTag("line").closeTag();
    builder.cdataSection(phrase(random, random.between(4, 20)) + u" & <" + phrase(random, 1) +
                         u"> ]] ");
    builder.endTag("line");
}

void appendInstruction(DocumentBuilder& builder, Random& random) {
    builder.instruction("typeset", phrase(random, random.between(2, 10)));
    if (random.below(4) == 0) builder.element("line", phrase(random, 2));
}

// Declarations.

void generateEntities(DocumentBuilder& builder, std::size_t size) {
    constexpr unsigned entityCount = 24;
    Random random;
    std::array<std::string, entityCount> names;
    std::array<std::u16string, entityCount> texts;
    std::string declarations;
    for (unsigned i = 0; i < entityCount; ++i) {
        names[i] = "word" + std::to_string(i);
        texts[i] = phrase(random, random.between(1, 4));
        declarations += "<!ENTITY " + names[i] + " \"" +
                        std::string(texts[i].begin(), texts[i].end()) + "\">\n";
    }
    builder.internalSubset("lines", declarations).openTag("lines").closeTag();
    while (builder.bytes().size() < size) {
        builder.text(u"\n").openTag("line").closeTag();
        for (int i = 0; i < 6; ++i) {
            const unsigned one = random.below(entityCount);
            builder.text(phrase(random, 2) + u" ").reference(names[one], texts[one]);
        }
        builder.endTag("line");
    }
    builder.text(u"\n").endTag("lines");
}

void generateDefaults(DocumentBuilder& builder, std::size_t size) {
    Random random;
    builder.internalSubset("rows",
                           "<!ATTLIST row kind CDATA \"plain\" state CDATA \"open\" "
                           "language NMTOKEN \"ja\" number CDATA #IMPLIED>\n");
    builder.openTag("rows").closeTag();
    for (unsigned number = 1; builder.bytes().size() < size; ++number) {
        builder.text(u"\n").openTag("row").attribute("number", decimal(number, 7));
        builder.defaulted(u"plain").defaulted(u"open").defaulted(u"ja").closeTag();
        builder.text(phrase(random, 3)).endTag("row");
    }
    builder.text(u"\n").endTag("rows");
}

// Small documents.

void generateOrder(DocumentBuilder& builder, std::size_t size) {
    Random random;
    builder.openTag("order").attribute("number", u"20417").closeTag();
    for (unsigned number = 1; builder.bytes().size() < size; ++number) {
        builder.text(u"\n  ").openTag("line").attribute("number", decimal(number, 1)).closeTag();
        builder.element("name", u"\u6DF1\u6E9D\u7389\u8EF8\u53D7 " + decimal(6200 + number, 4));
        builder.openTag("price").attribute("currency", u"JPY").closeTag();
        builder.text(decimal(random.between(80, 9000), 1)).endTag("price").endTag("line");
    }
    builder.text(u"\n").endTag("order");
}

constexpr bool small = true;
constexpr bool allFromFiles = true;

constexpr DocumentKind kinds[] = {
    {"Japanese, Shift_JIS", Encoding::ShiftJis, generateJapanese},
    {"Japanese, EUC-JP", Encoding::EucJp, generateJapanese},
    {"Japanese, ISO-2022-JP", Encoding::Iso2022Jp, generateJapanese},
    {"Japanese, UTF-16 little-endian", Encoding::Utf16Little, generateJapanese},
    {"Japanese, UTF-16 big-endian", Encoding::Utf16Big, generateJapanese},
    {"Japanese, UTF-8", Encoding::Utf8, generateJapanese},
    {"many namespaces", Encoding::Utf8, generateNamespaces},
    {"short records", Encoding::Utf8, generateRecords},
    {"short records, no indentation", Encoding::Utf8, generateBareRecords},
    {"short records, CR LF", Encoding::Utf8, generateCrLfRecords},
    {"short records, long names", Encoding::Utf8, generateLongNames},
    {"prose", Encoding::Utf8, generateProse},
    {"references in texts", Encoding::Utf8, generateLines<appendReferences>},
    {"references in attributes", Encoding::Utf8, generateLines<appendValueReferences>},
    {"comments", Encoding::Utf8, generateLines<appendComment>},
    {"CDATA sections", Encoding::Utf8, generateLines<appendCdataSection>},
    {"processing instructions", Encoding::Utf8, generateLines<appendInstruction>},
    {"entities of the internal subset", Encoding::Utf8, generateEntities},
    {"defaults by ATTLIST", Encoding::Utf8, generateDefaults},
    {"half a kilobyte, UTF-8", Encoding::Utf8, generateOrder, small},
    {"half a kilobyte, Shift_JIS", Encoding::ShiftJis, generateOrder, small},
    {"half a kilobyte, UTF-8, all from files", Encoding::Utf8, generateOrder, small, allFromFiles},
    {"half a kilobyte, Shift_JIS, all from files", Encoding::ShiftJis, generateOrder, small,
     allFromFiles},
};

}  // namespace

const DocumentKind& documentKind(const std::string& name) {
    const auto* const found =
        std::find_if(std::begin(kinds), std::end(kinds),
                     [&name](const DocumentKind& one) { return one.name == name; });
    if (found == std::end(kinds)) throw std::invalid_argument("no kind of document " + name);
    return *found;
}

}  // namespace bench
