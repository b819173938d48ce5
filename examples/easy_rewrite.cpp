// Says in an order that its prices are in yen, and writes it in UTF-16.
#include <cstdio>

#include <qvox/easy.h>

int main(int, char** argv) {
    try {
        const auto order = qvox::easy::document::load(argv[1]);
        for (const auto& price : order.all("単価")) price.set("通貨", "円");
        order.save(argv[2], "UTF-16");
    } catch (const qvox::easy::error& error) {
        std::fprintf(stderr, "%d:%d: %s\n", error.line(), error.column(), error.what());
        return 1;
    }
}
