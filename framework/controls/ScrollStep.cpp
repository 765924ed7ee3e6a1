#include "framework/controls/ScrollStep.h"

#include <algorithm>

namespace {

int Target(const ItemRecord& record, int code, int position, int thumb) {
    switch (code) {
        case scrollLineBack:
            return position - record.lineStep;
        case scrollLineOn:
            return position + record.lineStep;
        case scrollPageBack:
            return position - record.pageStep;
        case scrollPageOn:
            return position + record.pageStep;
        case scrollThumbEnd:
        case scrollThumb:
            return thumb;
        default:
            return position;
    }
}

}  // namespace

bool EndsScrolling(int code) {
    return code == scrollThumbEnd || code == scrollEnd;
}

int ScrolledTo(const ItemRecord& record, int code, int position, int thumb) {
    const int minimum = static_cast<int>(record.minimum);
    const int maximum = static_cast<int>(record.maximum);
    return std::max(minimum, std::min(maximum, Target(record, code, position, thumb)));
}
