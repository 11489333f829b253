#include "system/SystemVersionChecks.hpp"

#include "ports/SystemVersion.hpp"

#include <cmath>

namespace vexto {

namespace {

bool newerThan(double lastVersionBefore)
{
    return std::floor(SystemVersion::appKitVersionNumber()) > lastVersionBefore;
}

} // namespace

bool KRVXSystemIsLeopardOrNewer()
{
    return newerThan(824);
}
bool KRVXSystemIsSnowLeopardOrNewer()
{
    return newerThan(949);
}
bool KRVXSystemIsLionOrNewer()
{
    return newerThan(1038);
}
bool KRVXSystemIsMountainLionOrNewer()
{
    return newerThan(1138);
}
bool KRVXDumbDownSpacesSupport()
{
    return newerThan(1138);
}

} // namespace vexto
