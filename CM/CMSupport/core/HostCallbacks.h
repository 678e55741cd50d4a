// Calls the functions that the host has set in the facade.
#pragma once

namespace core {

/// Calls the host's save callback. Returns false if none is set.
bool saveModel();

/// Returns whether the tool's property IPN::CMSaveOnCheckOut asks for the model to be saved before a check out.
[[nodiscard]] bool isSaveOnCheckOutWanted();

/// Saves the model before a check out of at least one item, if the tool's property asks for it.
template <class LIST> void saveBeforeCheckOut(const LIST &items) {
    if (!items.IsEmpty() && isSaveOnCheckOutWanted()) {
        saveModel();
    }
}

/// Saves the model before a recursive check out of items, if the tool's property asks for it and the model has not
/// been saved for the same command: a caller that works level by level requests one save by saveOnCheckout(1),
/// which is cleared here.
void saveBeforeRecursiveCheckOut();

/// Call the host's callbacks around a batch that reloads units. The host must have set them: they are not tested
/// for null.
void openReloads();
void closeReloads();

} // namespace core
