#include "host/plugin/FilterSession.Win.h"

#include <utility>

namespace host {

FilterSession::FilterSession(const ListedFilter& newFilter, const HostSettings& settings)
    : filter(newFilter), freesLibrary(settings.traits.Has(Trait::freeLibrary)), host(settings) {
    host.SetMattes(filter.description.InputMattes());
}

RunReport FilterSession::Run(Picture& picture, const Selection& selection, Execution execution) {
    if (!filter.description.Handles(host.FilterCaseOf(picture, selection))) {
        throw PluginError(Utf8Name(filter.file) +
                          ": the filter doesn't work on such a picture and selection");
    }
    return Finished(host.Run(Entry(), picture, selection, execution));
}

RunReport FilterSession::RunAbout() {
    return Finished(host.RunAbout(Entry()));
}

RunReport FilterSession::RunSelector(std::int16_t selector, const Picture& picture,
                                     const Selection& selection) {
    return Finished(host.RunSelector(Entry(), selector, picture, selection));
}

EntryPoint FilterSession::Entry() {
    if (!library) {
        library.emplace(filter);
    }
    return library->Entry();
}

RunReport FilterSession::Finished(RunReport report) {
    if (freesLibrary) {
        library.reset();
    }
    return report;
}

}  // namespace host
