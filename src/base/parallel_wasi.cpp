#include "base/parallel.h"

namespace keelview {

void ForEachInParallel(int count, const NumberedWork& work, const NumberedWork& begun) {
    ForEachByWorkers(
        count, [&] { return work; }, begun);
}

void ForEachByWorkers(int count, const Hiring& hire, const NumberedWork& begun) {
    const NumberedWork work = hire();
    for (int number = 1; number <= count; ++number) {
        if (begun) begun(number);
        work(number);
    }
}

}  // namespace keelview
