// zandermolite-run: the host as a command line program.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "host/command/Arguments.Win.h"
#include "host/command/BatchOptions.h"
#include "host/command/BatchReport.h"
#include "host/command/DialogUser.Win.h"
#include "host/picture/Picture.h"
#include "host/picture/Selection.h"
#include "host/plugin/FamilyServices.Win.h"
#include "host/plugin/FilterSession.Win.h"
#include "host/plugin/PluginFile.Win.h"

namespace host {

namespace {

[[noreturn]] void EndCrashed(const char* what) {
    std::cout.flush();
    std::fprintf(stderr, "zandermolite-run: the filter crashed (%s)\n", what);
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), statusCrashed);
    std::abort();
}

LONG WINAPI OnCrash(EXCEPTION_POINTERS* pointers) {
    char text[64];
    std::snprintf(text, sizeof(text), "exception 0x%08lX",
                  static_cast<unsigned long>(pointers->ExceptionRecord->ExceptionCode));
    EndCrashed(text);
}

void OnAbort(int) {
    EndCrashed("it ended the program");
}

ListedFilter FindFilter(const BatchOptions& options) {
    const std::filesystem::path& file = options.common.filters.front();
    for (const ListedFilter& filter : ListFile(file)) {
        if (options.filterName.empty() || filter.description.name == options.filterName) {
            return filter;
        }
    }
    throw PluginError(Utf8Name(file) + ": has no filter named " + options.filterName);
}

int List(const BatchOptions& options) {
    FilterList list;
    std::error_code error;
    if (std::filesystem::is_directory(options.list, error)) {
        list = ListFolder(options.list);
    } else {
        list.filters = ListFile(options.list);
    }
    std::vector<FilterLine> lines;
    for (const ListedFilter& filter : list.filters) {
        lines.push_back({Utf8Name(filter.file), filter.description});
    }
    std::cout << (options.json ? ListJson(lines) : ListLines(lines));
    for (const std::string& problem : list.problems) {
        std::cerr << problem << "\n";
    }
    return statusDone;
}

/// The filter's runs on one picture.
class Batch {
  public:
    Batch(const BatchOptions& newOptions, Picture newPicture)
        : options(newOptions),
          picture(std::move(newPicture)),
          selection(SelectionFrom(options.common, picture)),
          session(FindFilter(options), options.common.settings) {}

    void RunAll() {
        for (int run = 0; run < options.times; ++run) {
            const bool isRepeat = options.repeat && (run > 0 || options.times == 1);
            reports.push_back(session.Run(picture, selection,
                                          isRepeat ? Execution::repeat : Execution::interactive));
            if (!reports.back().Succeeded()) {
                return;
            }
        }
    }

    void RunAbout() { reports.push_back(session.RunAbout()); }

    void RunSelector() {
        reports.push_back(session.RunSelector(*options.selector, picture, selection));
    }

    const std::vector<RunReport>& Reports() const { return reports; }
    const Picture& Result() const { return picture; }

  private:
    const BatchOptions& options;
    Picture picture;
    Selection selection;
    FilterSession session;
    std::vector<RunReport> reports;
};

// Selectors without an image, if none is given, get a small one.
Picture InputPicture(const BatchOptions& options) {
    return options.common.image.empty() ? MakePicture(64, 64, 3)
                                        : LoadPicture(options.common.image);
}

int Run(const BatchOptions& options) {
    Batch batch(options, InputPicture(options));
    std::string written;
    DialogUser user(options.presses);
    if (options.about) {
        const FamilyServices services;
        batch.RunAbout();
    } else if (options.selector) {
        batch.RunSelector();
    } else {
        batch.RunAll();
        if (!options.out.empty() && batch.Reports().back().Succeeded()) {
            SavePicture(batch.Result(), options.out);
            written = Utf8Name(options.out);
        }
    }
    if (const auto waiting = user.Finish()) {
        throw PluginError("the filter opened no dialog '" + waiting->title + "' with an item " +
                          std::to_string(waiting->item));
    }
    std::cout << (options.json ? ReportJson(batch.Reports(), written)
                               : ReportLines(batch.Reports()));
    return StatusOf(batch.Reports());
}

int Main() {
    _setmode(_fileno(stdout), _O_BINARY);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(OnCrash);
    std::signal(SIGABRT, OnAbort);
    try {
        const ParsedCommandLine commandLine = ParseBatchOptions(ProgramArguments());
        if (!commandLine.text.empty()) {
            std::cout << commandLine.text;
            return statusDone;
        }
        const BatchOptions& options = commandLine.options;
        return options.list.empty() ? Run(options) : List(options);
    } catch (const std::bad_alloc&) {
        std::cerr << "zandermolite-run: not enough memory\n";
    } catch (const std::exception& error) {
        std::cerr << "zandermolite-run: " << error.what() << "\n";
    }
    return statusUnusable;
}

}  // namespace

}  // namespace host

int main() {
    return host::Main();
}
