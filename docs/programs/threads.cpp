// Walks one tree in two threads.
#include <cstdio>
#include <thread>

#include <qvox/qvox.h>

int main() {
    qvox::DOMParser parser;
    qvox::Document* order = parser.parse("tea.xml");
    // Each thread has an iterator of its own; nobody changes the tree meanwhile.
    const auto count = [order](int* found, unsigned long whatToShow) {
        qvox::NodeIterator* nodes = order->createNodeIterator(order, whatToShow, nullptr, true);
        while (nodes->nextNode() != nullptr) ++*found;
        order->freeNodeIterator(nodes);
    };
    int elements = 0;
    int comments = 0;
    std::thread other(count, &elements, qvox::NodeFilter::SHOW_ELEMENT);
    count(&comments, qvox::NodeFilter::SHOW_COMMENT);
    other.join();
    std::printf("%d elements, %d comment\n", elements, comments);
    parser.free(order);
}
