// Reads a document that grows beyond measure, and is told so.
#include <cstdio>

#include <qvox/qvox.h>

#include "text.h"

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
        parser.free(parser.parse(reinterpret_cast<unsigned short*>(source.data())));
        std::printf("read\n");
    } catch (const qvox::QVOXException& exception) {
        std::printf("refused, %d: %s\n", exception.getCode(),
                    utf8(exception.getMessage()).c_str());
    }
}
