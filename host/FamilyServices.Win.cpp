#include "host/FamilyServices.Win.h"

#include "host/Arguments.Win.h"

namespace host {

FamilyServices::FamilyServices()
    : library(LoadLibraryW((ProgramFolder() / L"Hadrowen.dll").c_str())) {}

FamilyServices::~FamilyServices() {
    if (library != nullptr)
        FreeLibrary(library);
}

}  // namespace host
