// The memory of libjpeg, counted, and failing on demand.
//
// JPEGMemory.cpp takes the place of the library's own link to the system's memory, which it keeps
// in one exchangeable part.
#pragma once

/// Begins a new count. All blocks from the nth on fail, 1 the first; 0 none. (After a single one
/// the library would try again with less.)
void CountJPEGBlocks(int failFrom);
/// Asked for since then, failed ones included.
int JPEGBlocksAsked();
/// Not given back.
int JPEGBlocksLive();
