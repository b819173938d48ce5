// Reads a document in memory: the package has headers and a library that fit each other.
#include <string>

#include <qvox/qvox.h>

int main() {
    std::u16string source = u"<a><b/><b/></a>";
    qvox::DOMParser parser;
    qvox::Document* document = parser.parse(reinterpret_cast<unsigned short*>(source.data()));
    const int found = document->getElementsByTagName("b")->getLength();
    parser.free(document);
    return found == 2 ? 0 : 1;
}
