#include "report/json_writer.h"

#include <gtest/gtest.h>

#include <limits>

namespace keelview {
namespace {

TEST(JsonWriter, NumbersAreWrittenAsPeopleReadThemAndReadBackAsTheyWere) {
    JsonWriter json;
    json.BeginArray();
    for (const double value :
         {0.0, 900000.0, -20.0, 0.1, 1.0 / 3, 2.5e-7, 1e300, std::numeric_limits<double>::infinity()})
        json.Number(value);
    json.EndArray();
    EXPECT_EQ(json.Text(), "[0,900000,-20,0.1,0.3333333333333333,2.5e-07,1e+300,null]");
}

}  // namespace
}  // namespace keelview
