// What takes no samples: plain numbers, dates and their texts, options, bonds and time value; and
// the readers of number columns.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

constexpr double kToday = 43000.0;

void computeNumbers() {
  const Arguments numbers = {0.0, -1.0, 1455.219971, 1e-20, -3.25e10};
  computeAll({"qxDecimals"}, {numbers, {0, 2, 6}});
  computeAll({"qxSlopePts"}, {{3.0}, numbers, {17.0}, {0.1}});
  computeAll({"qxFibonacciProject", "qxFibonacciRetrace"}, {numbers, {1399.42}});
  computeAll({"qxApproxEqual"}, {numbers, {1455.0}, {0.001}});
  computeAll({"qxPeriodToExp"}, {{1.0, 9.0, 12.5}});
  computeAll({"qxExpToPeriod"}, {{1.0, 1 / 9.0, 0.08}});
  computeAll({"qxEMA"}, {{1455.22}, {1399.42}, {1.0, 9.0, 12.5}});
  static const float kSingles[] = {0.0f, -1.0f, 1455.219971f, 1e-20f, -3.25e10f};
  for (const float& single : kSingles) computeAll({"qxIEEEtoMS"}, {{&single}});
  computeAll({"qxMStoIEEE"},
             {{"\0\0\0\0", "\0\0\x80\x81", "\x09\xE7\x35\x8B", "\x86\x88\xF2\xA3"}});
}

void computeDates() {
  const Arguments dates = {0.0,     0.5,      1.0,         60.25,     36585.999988426, 36586.75,
                           41234.1, 43000.01, 73050.33333, -1000.625, -657000.25,      2958465.9};
  computeAll({"qxDateToYMD", "qxJulianToYMD", "qxJulianToHMS", "qxDayOfWeek", "qxJulianDOW"},
             {dates});
  computeAll({"qxDatePart"}, {{"D", "H", "M", "N", "S", "Y", "?"}, dates});
  computeAll({"qxDateDiff", "qxJulianDif"}, {{"D", "S"}, {36000.625}, dates});
  computeAll({"qxFormatDate"},
             {{"yyyy/mm/dd hh:nn:ss", "m/d/yy h:n am/pm", "ddd A/P", "hh:mm ss"}, dates});
  computeAll({"qxJulianToDateTxt"}, {dates, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, {"-"}});
  computeAll({"qxJulianToTimeTxt"}, {dates, {1, 2, 3, 4}, {":"}});

  const Arguments years = {-5, 0, 19, 20, 99, 100, 1899, 1900, 2000, 2004, 2100, 9999};
  computeAll({"qxIsLeapYear", "qxYearToDays"}, {years});
  computeAll({"qxYMDtoDate", "qxDateValidate"}, {years, {0, 2, 12}, {29}, {13}, {59}, {58}});
  computeAll({"qxYMDToJulian"}, {years, {0, 2, 12}, {28}});
  computeAll({"qxYMDDif"}, {{1999}, {12}, {31}, years, {0, 2, 12}, {28}});
  computeAll({"qxNumToDate"}, {{-49772, 228, 190228, 200228, 990228, 1000228, 18990228, 19000228,
                                20000228, 20040228, 21000228, 99990228}});
  computeAll({"qxNumToTime"}, {{-65, 0, 247, 1287, 24687, 26000, 129987, 235959, 93059, 240000}});
  computeAll({"qxHMSToJulian"}, {{-5, 0, 19, 23}, {-5, 0, 39, 59}, {59}});
  computeAll({"qxHMSDif"}, {{9}, {30}, {0}, {-5, 0, 19, 23}, {-5, 0, 39, 59}, {59}});
}

void computeDateTexts() {
  const Arguments dates = {"1999/03/15",      "03-15-99", "15 March 2004 2:30 PM",
                           "990315",          "19990315", "02/30/2001",
                           "20000229 235959", "",         "x"};
  const Arguments times = {"9:30", "14:05:59", "2:30 PM", "9: 30", "25:00", "", "noon"};
  computeAll({"qxDateStrToYMD", "qxDateStrValidate", "qxDateStrToDate"},
             {dates, {QX_ORDER_YMD, QX_ORDER_MDY, QX_ORDER_DMY}});
  computeAll({"qxDateTxtToJulian", "qxDateTxtVal"}, {dates, {1, 3, 5, 8, 10, 12}});
  computeAll({"qxDateTxtDif"}, {{"2001/09/10"}, dates, {2}, {2, 4, 6}});
  computeAll({"qxTimeStrToHMS", "qxTimeStrToTime", "qxTimeTxtToJulian"}, {times});
  computeAll({"qxTimeTxtDif"}, {{"8:15"}, times});
}

void computeOptions() {
  for (int k = -40; k <= 40; ++k) computeAll({"qxApprxCumProbDist"}, {{0.1 * k}});
  for (const int32_t type : {QX_OPTION_CALL, QX_OPTION_PUT}) {
    for (const double strike : {80.0, 99.5, 130.0}) {
      for (const double days : {1.0, 30.0, 400.0}) {
        const qxOptionLeg leg = {0.0, strike, type, kToday + days};
        computeAll({"qxBlackScholes"}, {{&leg}, {101.25}, {3.1}, {0.01, 0.09}, {kToday}});
      }
    }
  }
  for (const char* name : {"qxBullCall", "qxBullPut", "qxBearCall", "qxBearPut", "qxLongStraddle",
                           "qxLongStrangle", "qxShortStraddle", "qxShortStrangle"}) {
    for (const double price : {0.0, 50.125, 101.3}) {
      qxOptionStrategy s = {};
      qxOptionInit(&s);
      s.price = price;
      s.long1 = {4.3, 50.0, QX_OPTION_CALL, kToday};
      s.long2 = {2.1, 45.0, QX_OPTION_PUT, kToday};
      s.short1 = {1.7, 55.0, QX_OPTION_CALL, kToday};
      s.short2 = {1.1, 40.0, QX_OPTION_PUT, kToday};
      const double status = every_function::functionNamed(name).call({&s});
      print(name, label(price),
            {status, s.maxprofit, s.riskreward, s.maxloss, s.upper, s.lower, s.uppermove,
             s.lowermove});
    }
  }
}

void computeTimeValues() {
  for (const double rate : {0.0, 3.75, 12.0}) {
    for (const double years : {0.5, 10.0, 30.0}) {
      for (const int32_t periods : {1, 12}) {
        qxTimeValue record = {1000.0, rate, years, periods};
        computeAll(
            {"qxFutureValue", "qxPresentValue", "qxFutureValueAnnuity", "qxPresentValueAnnuity"},
            {{&record}});
        computeAll({"qxFutureValueInt"}, {{&record}, {2500.0}});
        computeAll({"qxFutureValuePrinc"}, {{&record}, {5000.0}});
      }
    }
  }
}

void computeBonds() {
  for (const double coupon : {0.0, 55.0}) {
    for (const int32_t payments : {1, 2, 12}) {
      const qxBond bond = {1000.0, 965.5, coupon, payments, kToday + 3653.0};
      computeAll({"qxYieldtoMaturity", "qxTBillDiscYield", "qxTBillBondEqYield"},
                 {{&bond}, {kToday}});
      computeAll({"qxBondPricing", "qxBondDuration"}, {{&bond}, {1.0, 6.2}, {kToday}});
    }
  }
  computeAll({"qxBondAccrInt"}, {{0.0, 55.0}, {kToday}, {kToday - 77.0}, {365.0}});
  computeAll({"qxBondDurationPriceChg"}, {{965.5}, {1.0, 6.2}, {7.9}, {1.5, 6.7}});
}

// The daily bars become minutes of a few days.
void computeIntraday(const Prices& prices) {
  qxBars intraday = {};
  qxCopyBars(&prices.bars, &intraday);
  for (int32_t i = 0; i < intraday.barsize; ++i) {
    intraday.date.data[i] = 40000.0 + i / 400 + (i % 400 + 570) / 1440.0;
  }
  computeAll({"qxGroupBarsTime"}, {{300, 3600}, {40001.0}, {40010.0}},
             {"minutes", {&intraday, &intraday}, {}, nullptr});
  qxFreeBars(&intraday);
}

void computeColumns(const Prices& prices) {
  std::vector<double> numbers;
  every_function::appendBars(prices.bars, &numbers);
  print("qxTXTread", "", numbers);
  qxArray values = {};
  for (const int32_t column : {2, 5, 6, 7}) {
    numbers = {1.0 * qxTXT2Array(prices.path.c_str(), &values, ",", 1, column)};
    every_function::appendSeries(values, &numbers);
    print("qxTXT2Array", label(column), numbers);
    for (const int32_t count : {-3, 3}) {
      qxShiftArray(&values, count);
      numbers.clear();
      every_function::appendSeries(values, &numbers);
      print("qxShiftArray", label(column) + label(count), numbers);
    }
    qxFreeArray(&values);
  }
}

}  // namespace

void computeCases(const Prices& prices) {
  computeNumbers();
  computeDates();
  computeDateTexts();
  computeOptions();
  computeTimeValues();
  computeBonds();
  computeIntraday(prices);
  computeColumns(prices);
}

}  // namespace same_bits
