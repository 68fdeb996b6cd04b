#!/usr/bin/env bash
# The rooms' rules, checked on the source tree and the built extension:
# the office API's headers are included only in office/, driver/, bench/ and
# the component files of host/; the shipped component library holds nothing
# of the driver (the tests' and command line's way of working an office).
set -euo pipefail
src="$1"
library="$2"
status=0

allowed='^(office|driver|bench)/|^host/(AddinComponent\.cpp|ProtocolHandler\.(h|cpp)|StartupJob\.(h|cpp)|TerminateListener\.(h|cpp)|UserDialog\.cpp)$'
outside=$(cd "$src" && grep -rlE 'com/sun/star|cppuhelper' --include='*.cpp' --include='*.h' \
  --exclude-dir=build --exclude-dir=.git . | sed 's|^\./||' | grep -vE "$allowed" || true)
if [ -n "$outside" ]; then
  echo "Office API headers outside their rooms:"
  echo "$outside"
  status=1
fi

probes=$(nm -C "$library" | grep -E 'nivarel::driver|AddinProbe|CanDispatch|FireJobEvent|AddFailingStatusListener' || true)
if [ -n "$probes" ]; then
  echo "Driver code in the shipped library $library:"
  echo "$probes" | head -20
  status=1
fi
exit $status
