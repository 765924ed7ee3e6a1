#include "plain/PlainTransfer.h"

#include "base/HostServices.h"
#include "hostapi/Results.h"

void PlainWriteRow(const TileInfo& tile, int row, unsigned char* target, int count, int planes) {
    for (int column = 0; column < count; ++column) {
        const unsigned char* const source =
            tile.base + row % tile.height * tile.rowBytes + column % tile.width * bytesPerPixel;
        target[column * planes] = source[0];
        target[column * planes + 1] = source[1];
        target[column * planes + 2] = source[2];
    }
}

void PlainWriteTileToSelection(FilterContext* context, const TileInfo& tile) {
    hostapi::FilterRecord* const record = context->record;
    const hostapi::Rect selection = record->filterRect;
    record->inLoPlane = record->outLoPlane = 0;
    record->inHiPlane = record->outHiPlane = static_cast<std::int16_t>(record->planes - 1);
    for (std::int16_t y = selection.top; y < selection.bottom; ++y) {
        ShowProgress(y - selection.top, selection.bottom - selection.top);
        if (TestAbort()) {
            context->result = hostapi::userCanceledErr;
            break;
        }
        record->inRect = record->outRect = {y, selection.left, static_cast<std::int16_t>(y + 1),
                                            selection.right};
        context->result = AdvanceState();
        if (context->result != hostapi::noErr) {
            break;
        }
        PlainWriteRow(tile, y - selection.top, record->outData, selection.right - selection.left,
                      record->planes);
    }
    record->inRect = record->outRect = record->maskRect = {};
}
