// The reads of files, one of them made to fail as a broken disk fails it.
#pragma once

namespace qvox_test {

// From now on the n-th read, counted from 1, fails: once.
void fail_read(long n);

// Whether it has.
bool read_failed();

}  // namespace qvox_test
