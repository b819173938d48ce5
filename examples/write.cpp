// Writes a document in all the ways that there are.
#include <cstdio>

#include <qvox/qvox.h>

int main(int argc, char** argv) {
    qvox::DOMParser parser;
    try {
        qvox::Document* order = parser.parse(argc == 2 ? argv[1] : "");
        parser.write(order, "raised.xml");                // in the encoding that it declares
        parser.write(order, "raised-euc.xml", "EUC-JP");  // in another one, and declared as that
        parser.write(order, nullptr);                     // indented, to standard output
        int bytes = 0;
        parser.write(order, nullptr, &bytes);  // the bytes that it takes as UTF-16 in memory
        parser.free(order);
    } catch (const qvox::QVOXException& exception) {
        std::fprintf(stderr, "error %d\n", exception.getCode());  // the library said more
        return 1;
    }
}
