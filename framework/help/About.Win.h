// The About box, which the product family's shared library draws for all its plug-ins.
#pragma once

/// Shows the About box of the shared library. Without the library in the process, or without the
/// service in the library, nothing happens. FatalError 20001 if the names of library and registry
/// keys are missing from the resources.
void ShowAbout();
