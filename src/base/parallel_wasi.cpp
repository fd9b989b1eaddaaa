#include "base/parallel.h"

namespace keelview {

void ForEachInParallel(int count, const NumberedWork& work, const NumberedWork& begun) {
    for (int number = 1; number <= count; ++number) {
        if (begun) begun(number);
        work(number);
    }
}

}  // namespace keelview
