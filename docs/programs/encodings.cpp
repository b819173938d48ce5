// Shows what becomes of characters in the Japanese encodings, and of Shift_JIS on the way back.
#include <cstdio>
#include <vector>

#include <qvox/xstring.h>

static void print_bytes(const unsigned char* bytes) {
    while (*bytes != 0) std::printf("%02X", *bytes++);
}

int main() {
    for (const char16_t* text : {u"亜", u"ｱ", u"〜", u"～", u"‖", u"−", u"①", u"¥", u"é", u"𠮷"}) {
        const qvox::Xstring string = text;
        std::vector<unsigned char> buffer(2 * static_cast<std::size_t>(string.length()) + 1);
        std::printf("%s  Shift_JIS ", string.utf8().c_str());
        print_bytes(string.sjis_str(buffer.data()));
        const qvox::Xstring back(buffer.data());  // narrow text that goes in is Shift_JIS
        std::printf("  EUC-JP ");
        print_bytes(string.euc_str(buffer.data()));
        std::printf("  back %s\n", back.utf8().c_str());
    }
}
