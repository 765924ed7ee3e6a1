#include "host/record/ServiceDirectory.h"

namespace host {

bool ServiceDirectory::Register(hostapi::ServiceTag tag, void* service) {
    if (service == nullptr || Lookup(tag) != nullptr) {
        return false;
    }
    entries.push_back({tag, service});
    return true;
}

void* ServiceDirectory::Lookup(hostapi::ServiceTag tag) const {
    for (const Entry& entry : entries) {
        if (entry.tag == tag) {
            return entry.service;
        }
    }
    return nullptr;
}

bool ServiceDirectory::Remove(hostapi::ServiceTag tag) {
    return std::erase_if(entries, [tag](const Entry& entry) { return entry.tag == tag; }) > 0;
}

}  // namespace host
