// A filter in use: its code, and the host's side of it, for as long as the user stays with it.
#pragma once

#include <cstdint>
#include <optional>

#include "host/plugin/PluginFile.Win.h"
#include "host/record/FilterHost.h"

namespace host {

/// The filter finds its `parameters` again in each execution. As with FilterHost, the newest object
/// serves all calls.
class FilterSession {
  public:
    FilterSession(const ListedFilter& filter, const HostSettings& settings);

    const ListedFilter& Filter() const { return filter; }

    /// As FilterHost::Run(). Throws PluginError as well: if the code can't be loaded, or if the
    /// filter doesn't take such a picture and selection.
    RunReport Run(Picture& picture, const Selection& selection, Execution execution);
    /// As the functions of FilterHost. Throw PluginError if the code can't be loaded.
    RunReport RunAbout();
    RunReport RunSelector(std::int16_t selector, const Picture& picture,
                          const Selection& selection);

  private:
    EntryPoint Entry();
    RunReport Finished(RunReport report);

    ListedFilter filter;
    bool freesLibrary;
    // The library goes after the host, which may still hold the filter's memory.
    std::optional<LoadedFilter> library;
    FilterHost host;
};

}  // namespace host
