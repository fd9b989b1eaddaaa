// Odd files of the formats that are lines of text.

#include <gtest/gtest.h>

#include "support/told_recordings.h"

namespace keelview {
namespace {

TEST(OwnLines, AreReadInTheUnitAndTheDateOfTheFile) {
    const std::string fix = "T N3530 E13915 03/10/26 12:00:00 1\n";
    ExpectTold("", " 03/10/26 12:00:00 x\r\nT S0000.0 W00000.0 03/10/26 12:00:01 0\r\n", "Keelview: 0 ",
               {"T  N3530.60000 E13915.06 => 35.51 139.251, NoPlace 1",
                "U DMM\nT s3530.6 w07015.5 => -35.51 -70.2583333, NoPlace 1",
                "U WGS84 Deg\nT +35.5 -70.25 => 35.5 -70.25, NoPlace 1",
                "U dms\nT S353030.0\tW0701500 => -35.5083333 -70.25, NoPlace 1",
                "U\nT 3530.6 13915 => 35.51 139.25, NoPlace 1"});  // without a mark: positive
    ExpectTold(
        "", " 12:00:00 1\nT N6 E6 04/10/26 12:00:00. 1 2 3 4 5 6 7 8 9 10 11 12\n", "Keelview: ",
        {"T N6 E6 03-10-26 => 0 0.1 0.1, 86400000 0.1 0.1,",
         "T N6 E6 2026-10-03 => 0 0.1 0.1, Broken 1",  // the first date decides the order
         "T N6 E6 10/03/2026 => 0 0.1 0.1, Broken 1", "T N6 E6 32/10/26 => 86400000 0.1 0.1, Broken 1",
         "T N6 E6 03/10/80 => -1451606400000 0.1 0.1, 86400000 0.1 0.1,"});
    ExpectTold(
        fix, "\n", "Keelview: 0 35.5 139.25, Broken 1",
        {"T ", "T N6 E6 03/10/26 12:00:01", "T N6 E6 03/10/26 24:00:00 1", "T N6 E6 03/10/26 12:60 1",
         "T N6 E6 03/10/26 12:00:60 1", "T N6 E6 03/10/26 noon 1", "T N6 E6 someday 12:00:01 1",
         "T N6 E6 03/10/2 12:00:01x 1", "T N1e300 E1 03/10/26 12:00:01 1"});
    ExpectTold(fix, "\n", "Keelview: 0 35.5 139.25,",
               {"", "H header", "T", " T N6 E6 03/10/26 12:00:01 1",
                "T N6 E6 03/10/26 12:01 1 =>  60000 0.1 0.1,"});
    ExpectTold({"T is the first letter of this text, and nothing else\n => Unknown"});
}

TEST(Csv, TimesAreReadAsProgramsWriteThem) {
    ExpectTold(
        "", ",35.5,139.25\n", "CSV: 0 35.5 139.25,",
        {"Time,lat,lon\n@0 UTC", "日時,lat,lon\n2026/10/3 12:00", "Utc,lat,lon\n46298.5",
         "Date/Time,lat,lon\n10/3/2026 12:00:00 PM", "time,lat,lon\n\"2026-10-03 12:00:00\"",
         "UTC DATE,UTC TIME,lat,lon\n20261003,120000", "date,time,lat,lon\n2026-10-03,1791028800",
         "date,lat,lon\n2026-10-03 12:00:00", "timestamp,lat,lon\n2026-10-03T21:00:00+09:00 =>  zone 9",
         "GPS Time,lat,lon\n03.10.2026 09:00:00 pm JST =>  zone 9",
         "timestamp,lat,lon\n2026-10-04T03:59:00+15:59 =>  zone 15.983"});
    ExpectTold("", ",35,139\n", "CSV: 250 35 139,",
               {"ISODateTimeUTC,lat,lon\n@0.25Z", "unix time (s),lat,lon\n1791028800.25",
                "time_ms,lat,lon\n1791028800250", "epoch,lat,lon\n1791028800250000",
                "epoch,lat,lon\n1791028800250000000", "date,time,lat,lon\n2026-10-03,12:00:00.25",
                "timestamp,lat,lon\n2026-10-03T07:30:00.250-0430 =>  zone -4.5"});
    ExpectTold("time,lat,lon\n", ",35,139\n", "",
               {"1970-01-01T00:00:00Z => CSV: -1791028800000 35 139,", "0 => NoTimes",
                "20000 => CSV: -2272190400000 35 139,", "0,1,2\n20000 => NoTimes"});
    ExpectTold({// A time of six digits is no day of a spreadsheet.
                "date,time,lat,lon\n2026-10-03,030000,35,139 => CSV: -32400000 35 139,",
                "Date/Time,lat,lon\n10/3/2026 12:00:00 am,35,139 => CSV: -43200000 35 139,",
                "time;lat;lon\n46298,5;35,5;139,25\n => CSV: 0 35.5 139.25,",
                "lat,lon,speed\n35,139,5\n => NoTimes", "time,lat,lon\n => NoFixes",
                "when,where\n1,2\n => Unknown", std::string(1'000'000, ',') + " => Unknown"});
}

TEST(Csv, PlacesAreReadAsPeopleWriteThem) {
    ExpectTold(
        "", "", "CSV: 0 35.2875 139.475,",
        {"time\tlat\tlon\n1791028800\tN35 17.25\tE139 28.5", "time,lat,lon\n1791028800,N3517.25,E13928.5",
         "time;緯度;経度\n1791028800;35°17'15\"N;139°28'30\"E"});
    ExpectTold("", "", "CSV: 0 -35.2875 -139.475,",
               {"time;lat;long\n1791028800;S 35 17,25;W 139 28,5",
                "time,lat,lon\n1791028800,\"35° 17' 15\"\" S\",-139 28.5",
                "time,LATITUDE,N/S,LONGITUDE,E/W\n1791028800,35.2875,S,139.475,W",
                "\xEF\xBB\xBF\"time\",\"LATITUDE N/S\",\"LONGITUDE E/W\"\n1791028800,35.2875S,139.475W",
                "# a logger\nsep=;\n\ntime;lat [deg];lng [deg]\n1791028800;-35,2875;139.475w"});
    ExpectTold("time,lat,lon\n1791028800,", ",0.0\n1791028801,35,139\n", "CSV: 1000 35 139, NoPlace 1",
               {"90.01", "N35 60.0", "N35 17 60", "35 17 15 1", "E35", "north", "", "1e999", "nan", "0.0"});
}

TEST(Csv, SpeedsAnglesAndWindComeInTheUnitsOfTheirNames) {
    ExpectTold("time,lat,lon,", "\n1791028800,35,139,9.26,2", "CSV: 0 35 139",
               {"sog_kts =>  s9.26,", "Speed =>  s9.26,", "Speed (km/h) =>  s5,", "speed mph =>  s8.047,",
                "SOG [m/s] =>  s18,", "速度(ノット) =>  s9.26,", "hdg_true =>  h9.26,", "Bsp =>  b9.26,",
                "hacc =>  a9.26,", "Course (deg true) =>  c9.26,", "Twd =>  f9.26,",
                "cog_rad =>  c170.559,", "TWS (mps) =>  w18,", "cog deg true t => ,", "speed,sog =>  s2,"});
    // 8 knots of wind across a boat that makes 6 to the north are felt as 10 from 53.13 degrees.
    ExpectTold(
        "time,lat,lon,hdg,", "", "CSV: 0 35 139 ",
        {"bsp,aws,awa\n1791028800,35,139,0,6,10,-53.1301 => h0 b6 w8 f270,",
         "sog,aws,awa\n1791028800,35,139,90,6,10,53.1301 => s6 h90 w8 f180,",
         "bsp,tws,aws,awa\n1791028800,35,139,0,6,9,10,53.1301 => h0 b6 w9 f90,",
         "twa,tws\n1791028800,35,139,300,90,8 => h300 w8 f30,", "sog\n1791028800,35,139,9,1000001 => h9,",
         "sog\n1791028800,35,139,9, => h9,", "twd,twa\n1791028800,35,139,300,7,90 => h300 f7,"});
}

TEST(Csv, BoatsAreRecordingsAndWhatIsNoFixIsCounted) {
    ExpectTold("id,time,lat,lon\n1,1791028800,35,139\n", "", "CSV",
               {" =>  1: 0 35 139,", "2,1791028801,36,139 => : 0 35 139, 1000 36 139,",
                "\"B, \"\"c\"\"\",1791028800,36,139\n1,1791028801,35,139\n,,,\n\n\"B, "
                "\"\"c\"\"\",1791028801,36,139\n"
                " =>  1: 0 35 139, 1000 35 139, | B, \"c\": 0 36 139, 1000 36 139,"});
    std::string fleet = "id,time,lat,lon\n";
    for (int k = 0; k < 3000; ++k)
        fleet += std::to_string(k) + "," + std::to_string(1791028800 + k) + ",35,139\n";
    EXPECT_EQ(ReadTrackFile(fleet).Recordings.at(0).Fixes.size(), 3000U);
    const TrackFileContent content = ReadTrackFile(fleet.insert(16, "0,1791020000,35,139\n"));
    EXPECT_EQ(content.Recordings.size(), 2000U);
    EXPECT_EQ(ToldLeft(content.Recordings.at(0).Left), " TooMany 1000");
    ExpectTold("time,lat,lon\n@0Z,35,139\n", ",35,139", "CSV: 0 35 139, NoTime 1",
               {"2026-02-30T12:00:00Z", "2026-10-03T24:00:00Z", "2026-10-03T12:60:00Z",
                "2026-10-03T12:00:61Z", "@5+99:00", "@5+09:60", "@5 PST", "10/3/2026 13:00:05 pm",
                "2026-00010-03T12:00:05Z", "12:00:05", "3.5", ""});
    // One wrong time, ahead or back, costs one fix.
    ExpectTold("time,lat,lon\n", "", "CSV: ",
               {"@1Z,1,1\n@9Z,1,1\n@3Z,1,1\n@4Z,1,1 => 1000 1 1, 3000 1 1, 4000 1 1, TimeBack 1",
                "@9Z,1,1\n@1Z,1,1\n@2Z,1,1 => 1000 1 1, 2000 1 1, TimeBack 1",
                "@1Z,1,1\n@9Z,1,1\n@1Z,1,1\n@2Z,1,1\n@3Z,1,1"
                " => 1000 1 1, 2000 1 1, 3000 1 1, TimeBack 1 SameTime 1"});
    ExpectTold("time,lat,lon\n2026-10-03 12:00:00,35,139\n2026-10-03 ", "", "CSV: ",
               {"12:00:00,35,139 => 0 35 139, SameTime 1", "11:59:59,35,139 => 0 35 139, TimeBack 1",
                "12:00:05 => 0 35 139, NoPlace 1", "21:00:01+09:00,1,2 => 1000 1 2, OtherZone 1 zone 9",
                "21:00:01+09:00,1,2\n2026-10-03 12:00:05,35,139 => 1000 1 2, OtherZone 2 zone 9"});
}

std::string Rmc(const std::string& time, const std::string& more = "A,3530.0,N,13915.0,E,6.5,270,031026,") {
    return Sentence("GPRMC," + time + "," + more);
}
std::string Gga(const std::string& time, const std::string& place = "3530.00,S,07015.00,W,1") {
    return Sentence("GNGGA," + time + "," + place + ",08,0.9,5.4,M,46.9,M,,");
}

TEST(Nmea, SentencesOfOneSecondAreOneFix) {
    // As above, a wind of 8 knots across a boat that makes 6 to the north is felt as 10.
    ExpectTold(Rmc("120000") + "$HEHDT,0.0,T\n$VWVHW,,T,,M,6.0,N,,K\n$", "",
               "NMEA 0183: 0 35.5 139.25 s6.5 c270 h0 b6",
               {"WIMWV,90.0,T,8.0,N,A =>  w8 f90,", "WIMWV,53.1301,R,10.0,N,A =>  w8 f90,",
                "WIMWV,90.0,T,8.0,N,V => ,", "WIVWR,53.1301,L,10.0,N,,M,,K =>  w8 f270,",
                "WIMWV,270.0,T,10.0,M,A =>  w19.438 f270,", "WIMWV,270.0,T,18.52,K,A =>  w10 f270,",
                "WIMWD,310.0,T,,M,12.0,N,6.2,M =>  w12 f310,"});
    ExpectTold(Rmc("120000", "A,3530.00,N,13915.00,E,6.5,270.0,031026,3.0,W"), "",
               "NMEA 0183: 0 35.5 139.25",
               {"$HCHDM,2.0,M =>  s6.5 c270 h359,", "$HCHDG,2.0,1.0,W,4.0,E =>  s6.5 c270 h5,",
                "$GPVTG,271.5,T,278.5,M,7.5,N,13.9,K =>  s7.5 c271.5,", Gga("120000") + " =>  s6.5 c270,"});
    ExpectTold(
        {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n"
         "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n$HCHDG,101.1,2.0,E,,"
         " => NMEA 0183: -1026602681000 48.1173 11.5166667 s22.4 c84.4 h100,",
         Rmc("120000") + "$HCHDM,2.0,M\n => NMEA 0183: 0 35.5 139.25 s6.5 c270,"});
}

TEST(Nmea, TimesAreThoseOfDateAndClock) {
    const std::string zda = "$GPZDA,115959.00,03,10,2026,00,00\n$IIGLL,3530.0,N,13915.0,E,120000,A";
    ExpectTold(
        "", "", "NMEA 0183: ",
        {Rmc("120000.9996") + " => 1000 35.5 139.25 s6.5 c270,",
         Gga("115958") + zda + " => 0 35.5 139.25, NoTime 1",
         Rmc("235959") + Gga("000001") + " => 43199000 35.5 139.25 s6.5 c270, 43201000 -35.5 -70.25,",
         Rmc("000001") + Gga("120000") + " => -43199000 35.5 139.25 s6.5 c270, 0 -35.5 -70.25,",
         Rmc("120000", "A,35,N,139,E,,,010180,,") + " => -1475452800000 0.5833333 1.65,",   // 1980
         Rmc("120000", "A,35,N,139,E,,,010170,,") + " => 1364774400000 0.5833333 1.65,"});  // 2070
    ExpectTold({Gga("120000") + " => NoTimes", Rmc("120002", "V,,,,,,,,,") + " => NoFixes"});
}

TEST(Nmea, LoggersWriteMoreThanSentencesAndWhatIsNoFixIsCounted) {
    const std::string fix = "NMEA 0183: 0 35.5 139.25 s6.5 c270,";
    ExpectTold("# log\n", Rmc("120000") + "!AIVDM,1,1,,A,13u,0*00\n", fix,
               {"@0.123 ", "\\s:gps,c:1791028800*1A\\", "$GPRMC,1159", "[12:00] <- ",
                Sentence("PGRMC,A,3530.00"), "$GPWPL,3530.0,N,13915.0,W,M 1\n =>  mark M 1 35.5 -139.25",
                "$GPWPL,3530.0,N,18015.0,W,Nowhere\n"});
    ExpectTold({"$GPRMC,120000,A,3530.00,N,13915.00,E,6.5,270.0,031026,, \r\n => " + fix});
    std::string wrong = Rmc("120001");
    wrong[20] ^= 1;
    ExpectTold(
        Rmc("120000"), Rmc("120010"), fix + " 10000 35.5 139.25 s6.5 c270, ",
        {wrong + " => Broken 1", Rmc("126100") + " => Broken 1", Rmc("120061") + " => Broken 1",
         Rmc("240000") + " => Broken 1", Rmc("120001.x") + " => Broken 1", "$GPGLL,1*7\n => Broken 1",
         Rmc("", "V") + " => NotValid 1", Rmc("120002", "V") + Gga("120002", ",,,,0") + " => NotValid 1",
         Gga("120002", "3530.00,S,07015.00,W,0") + " => NotValid 1",
         "$IIGLL,3530.0,N,13915.0,E,120002,V\n => NotValid 1",
         Rmc("120003", "A,9930.0,N,3.0,E") + " => NoPlace 1",
         Rmc("120003", "A,3560.0,N,3.0,E") + " => NoPlace 1", Rmc("120003", "A,,,,") + " => NoPlace 1"});
}

TEST(Igc, HeadersExtensionsAndTheTaskAreRead) {
    const std::string date = "HFDTE031026\r\n", place = "3530000N13915000EA0010000200\r\n",
                      fix = "B120000" + place;
    ExpectTold(
        {"AXYZ123:Logger\r\nHFDTEDATE:031026,01\r\nHFFTYFRTYPE:Maker,Type 2\r\nHFGIDGLIDERID:D-1234\r\n"
         "HFCIDCOMPETITIONID: JPN 5\r\nHFTZNTIMEZONE:-09:30\r\n"
         "I073638FXA3939TDS4040LAD4141LOD4244GSP4547TRT4850HDT\r\n"
         "C210625100000210625000102\r\nC0000000N00000000ETAKEOFF\r\nC3530000N13915000EBuoy\r\n"
         "B1200003530123N13915500EA0010000200012546010270275\r\nLXYZ a comment\r\n"
         "B1200023330500S07015500WV0010000200012900------\r\nGABCDEF\r\n"
         " => IGC JPN 5/Maker,Type 2: 500 35.5020567 139.2583433 s5.4 c270 h275 a12, "
         "2900 -33.5083333 -70.2583333 a12, mark Buoy 35.5 139.25 zone -9.5",
         "AXYZ123\nHFGIDGLIDERID:D-1234\nHFTZNTIMEZONE:15\nHFTZNTIMEZONE: \n" + date + fix +
             " => IGC D-1234/XYZ123: 0 35.5 139.25,",
         date + fix + "HFTZN:9.5\nHFTZN:14.5 => IGC: 0 35.5 139.25, zone 14.5", fix + " => NoTimes",
         "HFDTE010180\n" + fix + " => IGC: -1475452800000 35.5 139.25,", date + " => NoFixes",
         date + "B235959" + place + "HFDTE041026\nB000001" + place +
             " => IGC: 43199000 35.5 139.25, 43201000 35.5 139.25,",
         "B is the second letter\n => Unknown"});
    ExpectTold(date + fix, "", "IGC: 0 35.5 139.25, Broken 1",
               {"B120000", "B12000x" + place, "B240000" + place, "B126000" + place, "B120061" + place});
    ExpectTold(date + fix + "B120001", "", "IGC: 0 35.5 139.25, NoPlace 1",
               {"3560000N13915000E", "9130123N13915500E", "3530123n13915500E", "0000000N00000000E"});
}

}  // namespace
}  // namespace keelview
