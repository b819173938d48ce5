// qvox/easy.h: documents in all encodings in and out, nodes, events, errors.
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include <qvox/easy.h>

#include "support/encode.h"
#include "support/recorder.h"
#include "support/tables.h"

namespace qvox_test {
namespace {

using namespace std::string_literals;
namespace easy = qvox::easy;

// What reading raises, as "code line:column message"; "ok" for nothing.
template <typename Read>
std::string error_of(const Read& read) {
    std::string found = "ok";
    output_of([&] {
        try {
            read();
        } catch (const easy::error& error) {
            found = std::to_string(error.code()) + ' ' + std::to_string(error.line()) + ':' +
                    std::to_string(error.column()) + ' ' + error.what();
        }
    });
    return found;
}

TEST(Easy, ReadsEveryEncoding) {
    const std::u16string wide = u"<a b='é'>亜𠮷</a>";
    const std::string declared = "<?xml version=\"1.0\" encoding=\"";
    // Bytes, the content, and the encoding as the tree has it.
    for (const auto& [bytes, content, encoding] :
         {std::tuple("<a b='é'>亜𠮷</a>"s, "<a b=\"é\">亜𠮷</a>", ""s),
          {"\xEF\xBB\xBF<a>亜</a>", "<a>亜</a>", ""},
          {declared + "utf-8\" standalone=\"yes\"?>\r\n<a>é\r\nx\r</a>", "<a>é\nx\n</a>", "utf-8"},
          {utf16le(u"\uFEFF" + wide), "<a b=\"é\">亜𠮷</a>", ""},
          {utf16be(u"<?xml version='1.0' encoding='UTF-16'?>" + wide), "<a b=\"é\">亜𠮷</a>",
           "UTF-16"},
          {utf16le(u"<?p?><a>亜</a>"), "<?p ?><a>亜</a>", ""},
          {declared + "Shift_JIS\"?><a>\x88\x9F\xB1</a>", "<a>亜ｱ</a>", "Shift_JIS"},
          {declared + "ISO-2022-JP\"?><a>\x1B$B0!\x1B(J</a>", "<a>亜</a>", "ISO-2022-JP"}}) {
        write_file("easy.xml", bytes);
        for (const bool isFile : {true, false}) {
            const easy::document document =
                isFile ? easy::document::load("easy.xml") : easy::document::parse(bytes);
            const std::string written = document.bytes();
            EXPECT_EQ(written.substr(written.find("?>\n") + 3), content) << bytes;
            const std::string declaration = document.self().first_child().value();
            EXPECT_EQ(declaration.find("encoding=\"" + encoding) != std::string::npos,
                      !encoding.empty());
            std::string text;
            easy::reader reader;
            reader.on_text = [&](const std::string& piece) { text += piece; };
            isFile ? reader.read("easy.xml") : reader.parse(bytes);
            EXPECT_EQ(text, document.root().text());
        }
    }
}

TEST(Easy, Errors) {
    // Bytes, and what is raised, with %s for the document's name.
    const std::pair<std::string, std::string> cases[] = {
        {"<a>é\n é<b></a>", "10 2:9 end tag (a) not match to start tag (b)"},
        {"<?xml version='1.0' encoding='UTF-8'?><a é=>",
         "6 1:45 %s : parse error (>) at line 1, col 45"},
        {"<a>é\xE3\x81</a>", "8 1:5 not UTF-8"},
        {"<a>é\n\0</a>"s, "8 2:1 not xml char (0)"},
        {"<?xml version='1.0' encoding='Shift_JIS'?><a>\x88\x9F<!-- -- --></a>",
         "6 1:53 '--' found in comment : %s ( -- ) at line 1, col 56"},
        {utf16le(u"\uFEFF<a>") + "x", "8 1:4 unexpected EOF at utf-16 second byte"},
    };
    for (const auto& [bytes, message] : cases) {
        write_file("easy.xml", bytes);
        const std::string ofFile = replaced(message, "%s", "easy.xml");
        const std::string ofMemory = replaced(message, "%s", "(memory)");
        EXPECT_EQ(error_of([] { easy::document::load("easy.xml"); }), ofFile);
        EXPECT_EQ(error_of([] { easy::reader().read("easy.xml"); }), ofFile);
        EXPECT_EQ(error_of([&, &all = bytes] { easy::document::parse(all); }), ofMemory);
        EXPECT_EQ(error_of([&, &all = bytes] { easy::reader().parse(all); }), ofMemory);
    }
    EXPECT_EQ(error_of([] { easy::document::load("absent.xml"); }),
              "1 0:0 file (absent.xml) cannot open");
    EXPECT_EQ(error_of([] { easy::document::load("."); }), "1 0:0 file (.) cannot open");
    EXPECT_EQ(error_of([] { easy::document("a").root().child("b").text(); }), "15 0:0 no node");
    EXPECT_EQ(error_of([] { easy::document("a").root().add("1"); }), "15 0:0 invalid element name");
    EXPECT_EQ(error_of([] { easy::document("\xFF"); }), "8 0:0 not UTF-8");
}

// The system's own names, whatever its narrow ones are; é is none of Shift_JIS.
TEST(Easy, NamesOfFiles) {
    for (const char* const name : {"表.xml", "é.xml"}) {
        const std::filesystem::path path = std::filesystem::u8path(name);
        easy::document("a").save(path);
        EXPECT_EQ(easy::document::load(path).root().name(), "a");
        write_file(name, "<?xml version='1.0' encoding='EUC-JP'?><a>\xC9\xBD<b></a>");
        EXPECT_EQ(error_of([&] { easy::document::load(path); }),
                  "10 1:52 end tag (a) not match to start tag (b)");
        write_file(name, "<?xml version='1.0' encoding='latin-1'?><a/>");
        EXPECT_EQ(error_of([&] { easy::reader().read(path); }),
                  "11 1:31 not supported encoding : " + std::string(name) +
                      " (latin-1) at line 1, col 39");
        std::filesystem::remove(path);
        EXPECT_EQ(error_of([&] { easy::document::load(path); }),
                  "1 0:0 file (" + std::string(name) + ") cannot open");
        EXPECT_EQ(error_of([&] { easy::document("a").save(path / name); }),
                  "2 0:0 file (" + (path / name).u8string() + ") cannot be written");
    }
}

TEST(Easy, WritesWhatAnEncodingLacks) {
    // Content, an encoding, and the bytes behind the declaration, or the error.
    for (const auto& [content, encoding, expected] :
         {std::tuple("<a b='é&#34;'>亜𠮷&#13;</a>", "utf8", "<a b=\"é&quot;\">亜𠮷&#xD;</a>"s),
          {"<a>亜𠮷</a>", "UTF-16", utf16le(u"<a>亜𠮷</a>")},
          {"<a b='é'>亜ｱ𠮷¥</a>", "SJIS", "<a b=\"&#xE9;\">\x88\x9F\xB1&#x20BB7;&#xA5;</a>"},
          {"<a>亜\n亜b亜ｱ</a>", "ISO-2022-JP",
           "<a>\x1B$B0!\x1B(J\n\x1B$B0!\x1B(Jb\x1B$B0!\x1B(J&#xFF71;</a>"},
          {"<a><![CDATA[亜é]]></a>", "EUC-JP", "<a><![CDATA[\xB0\xA1]]>&#xE9;<![CDATA[]]></a>"},
          {"<!DOCTYPE a [<!ENTITY e '>]'>]><a>é</a>", "Shift_JIS",
           "<!DOCTYPE a [<!ENTITY e \">]\">]><a>&#xE9;</a>"},
          {"<é/>", "EUC-JP", "8 0:0 U+00E9 in a name can't be written in EUC-JP"},
          {"<a><!--é--></a>", "Shift_JIS",
           "8 0:0 U+00E9 in a comment can't be written in Shift_JIS"},
          {"<a/>", "latin1", "2 0:0 encoding (latin1) is not one that can be written"}}) {
        const easy::document document = easy::document::parse(content);
        std::ostringstream stream;
        const std::string error = error_of([&, &name = encoding] { document.save(stream, name); });
        const std::string bytes = stream.str();
        EXPECT_EQ(error == "ok" ? bytes.substr(bytes.size() - expected.size()) : error, expected);
        if (error == "ok" && content[2] != '[') {
            EXPECT_EQ(easy::document::parse(bytes).root().text(), document.root().text());
        }
    }
}

TEST(Easy, SavesAllOrNothing) {
    easy::document document("é");
    write_file("saved.xml", "old");
    EXPECT_NE(error_of([&] { document.save("saved.xml", "EUC-JP"); }), "ok");
    EXPECT_EQ(read_file("saved.xml"), "old");
    EXPECT_EQ(error_of([&] { document.save("absent/saved.xml"); }),
              "2 0:0 file (absent/saved.xml) cannot be written");
    document.save("saved.xml");
    EXPECT_EQ(read_file("saved.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<é/>");
}

TEST(Easy, Nodes) {
    easy::document first = easy::document::parse(
        "<a x='1' p:y='2' xmlns:p='u'><b>1<c/>2</b>t<b><![CDATA[<]]></b><p:b>3</p:b><!--n--></a>");
    easy::document document = std::move(first);
    const easy::node a = document.root();
    std::string found;
    for (const easy::node& child : a.children()) found += child.name() + ' ';
    for (const easy::node& child : a.elements()) found += child.text() + ' ';
    for (const easy::node& child : a.elements(u"b")) found += child.text() + ' ';
    for (const easy::node& below : a.all("*")) found += below.name() + ' ';
    for (const easy::node& below : document.all_ns("u", "b")) found += below.namespace_uri() + ' ';
    for (const easy::node& attribute : a.attributes()) found += attribute.value() + ' ';
    EXPECT_EQ(found, "b #text b p:b #comment 12 < 3 12 < b c b p:b u 1 2 u ");
    EXPECT_EQ(a.get("x") + a.get("z", "-") + a.child("b").text(), "1-12");
    EXPECT_TRUE(a.get16("x") == u"1" && a.child("b").text16() == u"12" && a.name16() == u"a");
    EXPECT_TRUE(!a.has("z") && !a.child("z") && !a.parent().parent() &&
                a.parent() == document.self());

    for (const easy::node& child : a.children()) {
        if (!child.is_element()) child.remove();
    }
    a.set("x", std::u16string(u"é")).remove_attribute("p:y").remove_attribute("xmlns:p");
    a.child("b").set_text("新");
    a.add("d", "<").set("e", "f\t").add_comment("g");
    a.attributes().front().set_text("h");
    for (const easy::node& child : a.all("p:b")) child.remove();
    EXPECT_EQ(document.bytes(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<a x=\"h\"><b>新</b><b><![CDATA[<]]></b><d e=\"f&#x9;\">&lt;<!--g--></d></a>");
}

TEST(Easy, Events) {
    std::string events;
    easy::reader reader;
    reader.on_start = [&](const easy::start_tag& tag) {
        events += '<' + tag.name() + '|' + tag.local_name() + '|' + tag.get("é", "-") + '>';
    };
    reader.on_end = [&](const std::string& name) { events += '/' + name; };
    reader.on_text = [&](const std::string& text) { events += '\'' + text + '\''; };
    reader.on_comment = [&](const std::string& text) { events += '!' + text; };
    reader.on_instruction = [&](const std::string& target, const std::string& data) {
        events += '?' + target + '=' + data;
    };
    reader.on_warning = [&](const easy::error& error) {
        events += "warning " + std::to_string(error.line()) + ' ' + error.what();
    };
    output_of([&] {
        reader.parse("<p:a é='1' xmlns:p='u'>x&amp;<![CDATA[y]]><b/>\n&none;<!--c--><?t d?></p:a>");
    });
    EXPECT_EQ(events,
              "<p:a|a|1>'x&y'<b|b|->/bwarning 2 entity name (none) not found'\n'!c?t=d/p:a");

    reader.on_start = [](const easy::start_tag&) { throw std::out_of_range("own"); };
    EXPECT_THROW(reader.parse("<a/>"), std::out_of_range);
    easy::reader().parse("<a/>");
}

TEST(Easy, OpensFilesThatADocumentNamesWhenAsked) {
    write_file("named.ent", "named");
    const std::string bytes = "<!DOCTYPE a [<!ENTITY e SYSTEM 'named.ent'>]><a>&e;</a>";
    std::string text;
    easy::reader reader;
    reader.on_text = [&](const std::string& piece) { text += piece; };
    output_of([&] { reader.parse(bytes); });
    EXPECT_EQ(text, "");
    reader.external = easy::external_files::allowed;
    reader.parse(bytes);
    EXPECT_EQ(text, "named");
    EXPECT_EQ(easy::document::parse(bytes).root().text(), "named");
    output_of([&] {
        EXPECT_EQ(easy::document::parse(bytes, easy::external_files::refused).root().text(), "");
    });
}

}  // namespace
}  // namespace qvox_test
