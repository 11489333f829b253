#include "ports/SystemVersion.hpp"

namespace vexto {

namespace {

double& current()
{
    static double version = SystemVersion::newest;
    return version;
}

} // namespace

double SystemVersion::appKitVersionNumber()
{
    return current();
}

void SystemVersion::setAppKitVersionNumber(double version)
{
    current() = version;
}

} // namespace vexto
