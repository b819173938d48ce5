// Writes a small order in Shift_JIS.
#include <qvox/easy.h>

int main(int, char** argv) {
    const qvox::easy::document order("注文書");
    const auto line = order.root().add("行").set("番号", "1");
    line.add("品名", "深溝玉軸受 6201ZZ");
    line.add("備考", "髙橋様 × 2");
    order.save(argv[1], "Shift_JIS");
}
