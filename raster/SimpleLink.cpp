#include "raster/SimpleLink.h"

#include <cstring>
#include <utility>

#include "base/FatalError.h"
#include "base/NameCompare.h"
#include "base/TryMake.h"
#include "resources/Strings.h"

struct SimpleLink::Node {
    Node(void* record, const char* text);
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node();

    std::unique_ptr<Node> next;
    void* data;
    char name[nameCapacity];
};

SimpleLink::Node::Node(void* record, const char* text) : data(record) {
    Assert(record != nullptr, "SimpleLink / Zeile 25 !(ptr != NULL)");
    std::strncpy(name, text, nameCapacity - 1);
    name[nameCapacity - 1] = '\0';
}

SimpleLink::Node::~Node() {
    ::operator delete(data);
}

SimpleLink::SimpleLink() = default;

SimpleLink::~SimpleLink() {
    // One by one: the first node's destructor would recurse through the whole list.
    while (first) {
        first = std::move(first->next);
    }
}

void SimpleLink::Append(void* data, const char* name) {
    *tail = TryMake<Node>(data, name);
    if (*tail) {
        tail = &(*tail)->next;
    } else {
        ::operator delete(data);
    }
}

bool SimpleLink::Remove(short n) {
    Assert(n != 0, "SimpleLink / Zeile 205 !(n != 0)");
    std::unique_ptr<Node>* link = &first;
    for (int i = 1; *link; ++i, link = &(*link)->next) {
        if (i == n) {
            Assert((*link)->data != nullptr, "SimpleLink / Zeile 39 !(data != NULL)");
            *link = std::move((*link)->next);
            if (!*link) {
                tail = link;
            }
            lastFound = nullptr;
            return true;
        }
    }
    return false;
}

const SimpleLink::Node* SimpleLink::At(short n) const {
    if (lastFound == nullptr || n < lastFoundAt) {
        lastFound = first.get();
        lastFoundAt = 1;
    }
    const Node* node = lastFound;
    for (int i = lastFoundAt; node != nullptr && i != n; ++i) {
        node = node->next.get();
    }
    if (node != nullptr) {
        lastFound = node;
        lastFoundAt = n;
    }
    return node;
}

bool SimpleLink::NameAt(short n, char* name) const {
    Assert(n != 0, "SimpleLink / Zeile 230 !(n != 0)");
    const Node* node = At(n);
    std::strcpy(name, node != nullptr ? node->name : "");
    return node != nullptr;
}

bool SimpleLink::DataAt(short n, void** data) const {
    const Node* node = At(n);
    *data = node != nullptr ? node->data : nullptr;
    return node != nullptr;
}

bool SimpleLink::IsUnique(const char* name) const {
    if (NamesAreEqual(name, StringText(stringLastUsed))) {
        return false;
    }
    for (const Node* node = first.get(); node != nullptr; node = node->next.get()) {
        if (NamesAreEqual(name, node->name)) {
            return false;
        }
    }
    return true;
}
