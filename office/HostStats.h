// How many operations the object model has carried out in this process: the
// measure of the add-in's traffic with the office. With profiling on, the
// time of each outermost operation is summed by its name as well.
#pragma once

#include <string>
#include <vector>

namespace nivarel::office {

long HostCallCount();

struct HostCallTime {
  std::string what;
  long calls = 0;
  double ms = 0;
};

// Starts (clearing the sums) or stops the profile.
void ProfileHostCalls(bool on);
// The sums so far, the costliest first.
std::vector<HostCallTime> HostCallProfile();

}  // namespace nivarel::office
