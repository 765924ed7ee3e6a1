// Classes in place of the program's own controls, which draw enough to judge a layout by.
#pragma once

/// Once, before a dialog is opened.
void RegisterStandIns();
