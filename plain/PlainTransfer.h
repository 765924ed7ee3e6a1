// The transfer of the tile in its plainest form: a remainder and three bytes for each pixel. The
// tests hold the fast one against it, and the benchmark times both.
#pragma once

#include "shell/transfer/Transfer.h"

/// The pixels of row `row`, counted from the selection's top, from its first column on.
void PlainWriteRow(const TileInfo& tile, int row, unsigned char* target, int count, int planes);

/// WriteTileToSelection for a host that delivers what it is asked for: three planes or more, a
/// selection that is not empty.
void PlainWriteTileToSelection(FilterContext* context, const TileInfo& tile);
