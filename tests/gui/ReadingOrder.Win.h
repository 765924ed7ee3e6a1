// The order in which a dialog is read.
#pragma once

#include <vector>

#include "fixtures/DrivenDialog.Win.h"

/// The dialog's tab stops as they are read: rows from the top, columns from the left, a group box
/// as a whole, and so with radio buttons that belong together. The buttons that close the dialog,
/// and those below them, come first.
std::vector<int> ReadingOrder(const DrivenDialog& dialog);
