// Reads a document that grows beyond measure, and is told so.
#include <cstdio>
#include <string>

#include <qvox/qvox.h>

int main() {
    std::u16string source = u"<!DOCTYPE a [<!ENTITY e0 'ha'>";
    for (char16_t i = u'1'; i <= u'9'; ++i) {
        source += u"<!ENTITY e";
        source += i;
        source += u" '";
        for (int times = 0; times < 10; ++times) {
            source += u"&e";
            source += static_cast<char16_t>(i - 1);
            source += u';';
        }
        source += u"'>";
    }
    source += u"]><a>&e9;</a>";
    qvox::DOMParser parser;
    try {
        parser.free(parser.parse(qvox::Xstring(source).unicode_str()));
        std::printf("read\n");
    } catch (const qvox::QVOXException& exception) {
        std::printf("refused, %d: %s\n", exception.getCode(),
                    exception.getMessage().utf8().c_str());
    }
}
