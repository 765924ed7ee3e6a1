// Numbers that the shared library's resources and its code share. Macros, because the resource
// compiler reads this file too.
#pragma once

#define ICON_FAMILY 1
#define DIALOG_ABOUT 100
