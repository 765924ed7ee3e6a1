// A host whose callbacks fail.
#pragma once

#include "host/record/FilterHost.h"

/// An entry that calls `entry` with a record whose callbacks go by Refusals, each a group of its
/// own; a refused one reports an error, or has nothing to give. One at a time.
host::EntryPoint EntryWithRefusals(host::EntryPoint entry);
