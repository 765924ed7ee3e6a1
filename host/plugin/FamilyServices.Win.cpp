#include "host/plugin/FamilyServices.Win.h"

#include "host/command/Arguments.Win.h"

namespace host {

FamilyServices::FamilyServices()
    : library(LoadLibraryW((ProgramFolder() / L"Hadrowen.dll").c_str())) {}

FamilyServices::~FamilyServices() {
    if (library != nullptr) {
        FreeLibrary(library);
    }
}

}  // namespace host
