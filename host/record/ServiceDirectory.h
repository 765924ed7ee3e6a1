// Services that the filters of one family offer each other, by tags.
#pragma once

#include <vector>

#include "hostapi/SharedLibrary.h"

namespace host {

class ServiceDirectory {
  public:
    /// False for a tag that is taken, and for a null service.
    bool Register(hostapi::ServiceTag tag, void* service);
    /// Null if there is none.
    void* Lookup(hostapi::ServiceTag tag) const;
    /// False if there was none.
    bool Remove(hostapi::ServiceTag tag);

  private:
    struct Entry {
        hostapi::ServiceTag tag;
        void* service;
    };
    std::vector<Entry> entries;
};

}  // namespace host
