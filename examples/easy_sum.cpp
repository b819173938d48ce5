// Adds the unit prices of an order, whatever encoding it is in.
#include <cstdio>
#include <string>

#include <qvox/easy.h>

int main(int, char** argv) {
    int total = 0;
    const auto order = qvox::easy::document::load(argv[1]);
    for (const auto& price : order.all("単価")) total += std::stoi(price.text());
    std::printf("%d\n", total);
}
