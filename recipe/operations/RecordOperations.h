// The catalogue's operations as rows of the operation table.
#pragma once

#include <vector>

#include "paint/Catalog.h"
#include "recipe/language/Definitions.h"

namespace recipe {

std::vector<OperationDefinition> RecordOperations();

/// The key of a field; a record of these `defaults` has its value when it is left out.
KeyDefinition KeyOf(const Field& field, const void* defaults);
template <typename Record, typename Type>
KeyDefinition KeyFor(Type Record::*member) {
    const Record defaults{};
    return KeyOf(FieldFor(member), &defaults);
}

/// Runs an operation as the editor does. `record` is of the row's type; two colours that it takes
/// from the editor become the session's. Throws std::bad_alloc.
void RunRecord(Session& session, const CatalogRow& row, const void* record);

}  // namespace recipe
