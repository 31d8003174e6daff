// Usage: crowd COUNT
// Keeps so many sleeping processes until it is ended.

#include <unistd.h>

#include <cstdlib>

#include "sleepers.h"

int main(int argc, char** argv)
{
    const quenchly::bench::Sleepers sleepers(argc > 1 ? std::atoi(argv[1]) : 0);
    ::pause();
}
