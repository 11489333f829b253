#pragma once

// Which system the pane runs on, by the toolkit's version number: each is true when the floor of
// that number is greater than the last version of the system before.
namespace vexto {

bool KRVXSystemIsLeopardOrNewer();
bool KRVXSystemIsSnowLeopardOrNewer();
bool KRVXSystemIsLionOrNewer();
bool KRVXSystemIsMountainLionOrNewer();
// Spaces offer less from this system on: the pane then shows the reduced Spaces settings.
bool KRVXDumbDownSpacesSupport();

} // namespace vexto
