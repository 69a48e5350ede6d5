#include "app/LoadTexts.h"

#include <new>

namespace Quorvex::App {

namespace {

const BilingualText couldNotBeOpened = {"Die Datei konnte nicht geöffnet werden"_t, "The file could not be opened"_t};
const BilingualText notEnoughMemory = {": Nicht genügend Speicher!"_t, ": Not enough memory!"_t};
const BilingualText internalMessage = {". Interne Meldung: "_t, ". Internal message: "_t};
const BilingualText incompleteImage = {"Achtung: Dieses Bild konnte nicht vollständig geladen werden"_t,
                                       "Attention: This image could not be loaded completely!"_t};
const BilingualText wrongFilenameExtension = {"Achtung: Diese Datei hat eine falsche Dateinamenserweiterung"_t,
                                              "Attention: This file has a wrong filename extension!"_t};

BilingualText Joined(const BilingualText& first, const BilingualText& second) {
    return {first[0] + second[0], first[1] + second[1]};
}

} // namespace

BilingualText DescribeLoadFailure(const std::exception& failure) {
    if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr)
        return Joined(couldNotBeOpened, notEnoughMemory);
    const String message(failure.what());
    if (message.IsEmpty())
        return Joined(couldNotBeOpened, {".", "."});
    return Joined(couldNotBeOpened, {internalMessage[0] + message, internalMessage[1] + message});
}

const BilingualText& IncompleteImageText() {
    return incompleteImage;
}

const BilingualText& WrongFilenameExtensionText() {
    return wrongFilenameExtension;
}

} // namespace Quorvex::App
