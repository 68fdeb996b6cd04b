// How many operations the object model has carried out in this process: the
// measure of the add-in's traffic with the office.
#pragma once

namespace nivarel::office {

long HostCallCount();

}  // namespace nivarel::office
