// How many operations the host layer has carried out in this process: the
// measure of the add-in's traffic with the office.
#pragma once

namespace nivarel::host {

long HostCallCount();

}  // namespace nivarel::host
