// The records cross the interface by address, so their layout is fixed: every size and offset is
// asserted here, on every platform.
#include <cstddef>

#include "quorvex.h"

#define QX_AT(record, field, offset) static_assert(offsetof(record, field) == (offset))

static_assert(sizeof(void*) == 8, "the library is 64-bit only");
static_assert(sizeof(qxArray) == 20 && alignof(qxArray) == 4);
QX_AT(qxArray, data, 0);
QX_AT(qxArray, size, 8);
QX_AT(qxArray, datasize, 12);
QX_AT(qxArray, firstvalid, 16);

static_assert(sizeof(qxBars) == 548);
QX_AT(qxBars, date, 0);
QX_AT(qxBars, open, 20);
QX_AT(qxBars, high, 40);
QX_AT(qxBars, low, 60);
QX_AT(qxBars, close, 80);
QX_AT(qxBars, volume, 100);
QX_AT(qxBars, openint, 120);
QX_AT(qxBars, barsize, 140);
QX_AT(qxBars, datasize, 144);
QX_AT(qxBars, reccnt, 148);
QX_AT(qxBars, path, 152);
QX_AT(qxBars, name, 408);
QX_AT(qxBars, description, 424);
QX_AT(qxBars, symbol, 472);
QX_AT(qxBars, cusip, 488);
QX_AT(qxBars, begindate, 500);
QX_AT(qxBars, enddate, 508);
QX_AT(qxBars, filetype, 516);
QX_AT(qxBars, frequency, 520);
QX_AT(qxBars, datatype, 524);
QX_AT(qxBars, optiontype, 528);
QX_AT(qxBars, deliverydate, 532);
QX_AT(qxBars, strikeprice, 540);

static_assert(sizeof(qxCandles) == 32);
QX_AT(qxCandles, codes, 0);
QX_AT(qxCandles, shadowlong, 8);
QX_AT(qxCandles, shadowshort, 16);
QX_AT(qxCandles, equality, 24);

static_assert(sizeof(qxTXTinfo) == 56);
QX_AT(qxTXTinfo, dt, 0);
QX_AT(qxTXTinfo, oi, 28);
QX_AT(qxTXTinfo, dtformat, 32);
QX_AT(qxTXTinfo, skip, 36);
QX_AT(qxTXTinfo, delimit, 40);

static_assert(sizeof(qxOrder) == 80);
QX_AT(qxOrder, fromname, 20);
QX_AT(qxOrder, volume, 40);
QX_AT(qxOrder, kind, 44);
QX_AT(qxOrder, direction, 48);
QX_AT(qxOrder, price, 52);
QX_AT(qxOrder, ordertype, 60);
QX_AT(qxOrder, timeinforce, 64);
QX_AT(qxOrder, date, 68);
QX_AT(qxOrder, cancelled, 76);

static_assert(sizeof(qxPosition) == 52);
QX_AT(qxPosition, direction, 20);
QX_AT(qxPosition, bar, 24);
QX_AT(qxPosition, date, 28);
QX_AT(qxPosition, price, 36);
QX_AT(qxPosition, volume, 44);
QX_AT(qxPosition, remaining, 48);

static_assert(sizeof(qxTrade) == 104);
QX_AT(qxTrade, exit, 52);

static_assert(sizeof(qxTradeStats) == 188);
QX_AT(qxTradeStats, trades, 24);
QX_AT(qxTradeStats, pctprofitable, 28);
QX_AT(qxTradeStats, winners, 36);
QX_AT(qxTradeStats, losers, 40);
QX_AT(qxTradeStats, largestwin, 44);
QX_AT(qxTradeStats, averagetrade, 84);
QX_AT(qxTradeStats, maxwinners, 92);
QX_AT(qxTradeStats, winnerbars, 100);
QX_AT(qxTradeStats, maxdrawdown, 116);
QX_AT(qxTradeStats, maxcontracts, 132);
QX_AT(qxTradeStats, openprofit, 164);
QX_AT(qxTradeStats, winnerbarsum, 172);
QX_AT(qxTradeStats, losestreak, 184);

static_assert(sizeof(qxOrderSystem) == 1364);
QX_AT(qxOrderSystem, name, 0);
QX_AT(qxOrderSystem, tick, 80);
QX_AT(qxOrderSystem, tickvalue, 88);
QX_AT(qxOrderSystem, unitcost, 96);
QX_AT(qxOrderSystem, sidecost, 104);
QX_AT(qxOrderSystem, deduction, 112);
QX_AT(qxOrderSystem, margin, 120);
QX_AT(qxOrderSystem, delay, 128);
QX_AT(qxOrderSystem, gapfill, 132);
QX_AT(qxOrderSystem, reverse, 136);
QX_AT(qxOrderSystem, pyramid, 140);
QX_AT(qxOrderSystem, allowlong, 144);
QX_AT(qxOrderSystem, allowshort, 148);
QX_AT(qxOrderSystem, bar, 152);
QX_AT(qxOrderSystem, marketpos, 156);
QX_AT(qxOrderSystem, longvol, 160);
QX_AT(qxOrderSystem, shortvol, 164);
QX_AT(qxOrderSystem, netvol, 168);
QX_AT(qxOrderSystem, avgprice, 172);
QX_AT(qxOrderSystem, lastentry, 180);
QX_AT(qxOrderSystem, counter, 188);
QX_AT(qxOrderSystem, longbars, 192);
QX_AT(qxOrderSystem, shortbars, 196);
QX_AT(qxOrderSystem, posbars, 200);
QX_AT(qxOrderSystem, longstats, 204);
QX_AT(qxOrderSystem, shortstats, 392);
QX_AT(qxOrderSystem, netstats, 580);
QX_AT(qxOrderSystem, orders, 768);
QX_AT(qxOrderSystem, positions, 776);
QX_AT(qxOrderSystem, trades, 784);
QX_AT(qxOrderSystem, ordercap, 792);
QX_AT(qxOrderSystem, ordercount, 796);
QX_AT(qxOrderSystem, positioncap, 800);
QX_AT(qxOrderSystem, tradecap, 808);
QX_AT(qxOrderSystem, bars, 816);

static_assert(sizeof(qxOptVar) == 36);
QX_AT(qxOptVar, count, 24);
QX_AT(qxOptVar, value, 28);

static_assert(sizeof(qxRect) == 16);
QX_AT(qxRect, left, 0);
QX_AT(qxRect, top, 4);
QX_AT(qxRect, right, 8);
QX_AT(qxRect, bottom, 12);

static_assert(sizeof(qxGraph) == 620);
QX_AT(qxGraph, initialised, 0);
QX_AT(qxGraph, barwidth, 4);
QX_AT(qxGraph, firstshown, 8);
QX_AT(qxGraph, lastshown, 12);
QX_AT(qxGraph, area, 16);
QX_AT(qxGraph, headerarea, 32);
QX_AT(qxGraph, footerarea, 48);
QX_AT(qxGraph, datearea, 64);
QX_AT(qxGraph, valuearea, 80);
QX_AT(qxGraph, bararea, 96);
QX_AT(qxGraph, background, 112);
QX_AT(qxGraph, fill, 116);
QX_AT(qxGraph, axisshown, 120);
QX_AT(qxGraph, axisshown2, 124);
QX_AT(qxGraph, hgap, 128);
QX_AT(qxGraph, vgap, 132);
QX_AT(qxGraph, axisface, 136);
QX_AT(qxGraph, axissize, 168);
QX_AT(qxGraph, axiscolour, 176);
QX_AT(qxGraph, ticklength, 180);
QX_AT(qxGraph, datesshown, 184);
QX_AT(qxGraph, gridwidth, 188);
QX_AT(qxGraph, gridstyle, 192);
QX_AT(qxGraph, gridcolour, 196);
QX_AT(qxGraph, titleface, 200);
QX_AT(qxGraph, titlesize, 232);
QX_AT(qxGraph, titlecolour, 240);
QX_AT(qxGraph, headertext, 244);
QX_AT(qxGraph, headerback, 500);
QX_AT(qxGraph, headerface, 504);
QX_AT(qxGraph, headersize, 536);
QX_AT(qxGraph, headercolour, 544);
QX_AT(qxGraph, headershown, 548);
QX_AT(qxGraph, titleheight, 552);
QX_AT(qxGraph, footerback, 556);
QX_AT(qxGraph, footerface, 560);
QX_AT(qxGraph, footersize, 592);
QX_AT(qxGraph, footercolour, 600);
QX_AT(qxGraph, subwins, 604);
QX_AT(qxGraph, subwincap, 612);
QX_AT(qxGraph, subwincount, 616);

static_assert(sizeof(qxGraphSubwin) == 364);
QX_AT(qxGraphSubwin, pane, 0);
QX_AT(qxGraphSubwin, height, 16);
QX_AT(qxGraphSubwin, background, 20);
QX_AT(qxGraphSubwin, title, 24);
QX_AT(qxGraphSubwin, titleshown, 280);
QX_AT(qxGraphSubwin, axischart, 284);
QX_AT(qxGraphSubwin, gridcolour, 288);
QX_AT(qxGraphSubwin, gridwidth, 292);
QX_AT(qxGraphSubwin, gridstyle, 296);
QX_AT(qxGraphSubwin, axischart2, 300);
QX_AT(qxGraphSubwin, gridcolour2, 304);
QX_AT(qxGraphSubwin, gridwidth2, 308);
QX_AT(qxGraphSubwin, gridstyle2, 312);
QX_AT(qxGraphSubwin, charts, 316);
QX_AT(qxGraphSubwin, chartcap, 324);
QX_AT(qxGraphSubwin, chartcount, 328);
QX_AT(qxGraphSubwin, lines, 332);
QX_AT(qxGraphSubwin, linecap, 340);
QX_AT(qxGraphSubwin, linecount, 344);
QX_AT(qxGraphSubwin, shapes, 348);
QX_AT(qxGraphSubwin, shapecap, 356);
QX_AT(qxGraphSubwin, shapecount, 360);

static_assert(sizeof(qxGraphChart) == 628);
QX_AT(qxGraphChart, style, 0);
QX_AT(qxGraphChart, scaleflags, 4);
QX_AT(qxGraphChart, minmode, 8);
QX_AT(qxGraphChart, maxmode, 12);
QX_AT(qxGraphChart, maximum, 16);
QX_AT(qxGraphChart, minimum, 24);
QX_AT(qxGraphChart, scalechart, 32);
QX_AT(qxGraphChart, colour, 36);
QX_AT(qxGraphChart, colour2, 40);
QX_AT(qxGraphChart, colour3, 44);
QX_AT(qxGraphChart, penwidth, 48);
QX_AT(qxGraphChart, penstyle, 52);
QX_AT(qxGraphChart, selected, 56);
QX_AT(qxGraphChart, series, 60);
QX_AT(qxGraphChart, bars, 80);

static_assert(sizeof(qxGraphLine) == 28);
QX_AT(qxGraphLine, chart, 0);
QX_AT(qxGraphLine, price, 4);
QX_AT(qxGraphLine, colour, 12);
QX_AT(qxGraphLine, penwidth, 16);
QX_AT(qxGraphLine, penstyle, 20);
QX_AT(qxGraphLine, selected, 24);

static_assert(sizeof(qxGraphShape) == 56);
QX_AT(qxGraphShape, chart, 0);
QX_AT(qxGraphShape, kind, 4);
QX_AT(qxGraphShape, x1, 8);
QX_AT(qxGraphShape, y1, 16);
QX_AT(qxGraphShape, x2, 24);
QX_AT(qxGraphShape, y2, 32);
QX_AT(qxGraphShape, colour, 40);
QX_AT(qxGraphShape, penwidth, 44);
QX_AT(qxGraphShape, penstyle, 48);
QX_AT(qxGraphShape, selected, 52);

static_assert(sizeof(qxGraphInfo) == 40);
QX_AT(qxGraphInfo, subwin, 0);
QX_AT(qxGraphInfo, element, 4);
QX_AT(qxGraphInfo, kind, 8);
QX_AT(qxGraphInfo, x, 12);
QX_AT(qxGraphInfo, bar, 16);

static_assert(sizeof(qxOptionLeg) == 28);
QX_AT(qxOptionLeg, premium, 0);
QX_AT(qxOptionLeg, strike, 8);
QX_AT(qxOptionLeg, type, 16);
QX_AT(qxOptionLeg, expiration, 20);

static_assert(sizeof(qxOptionStrategy) == 176);
QX_AT(qxOptionStrategy, price, 0);
QX_AT(qxOptionStrategy, long1, 8);
QX_AT(qxOptionStrategy, long2, 36);
QX_AT(qxOptionStrategy, short1, 64);
QX_AT(qxOptionStrategy, short2, 92);
QX_AT(qxOptionStrategy, maxprofit, 120);
QX_AT(qxOptionStrategy, riskreward, 128);
QX_AT(qxOptionStrategy, maxloss, 136);
QX_AT(qxOptionStrategy, upper, 144);
QX_AT(qxOptionStrategy, lower, 152);
QX_AT(qxOptionStrategy, uppermove, 160);
QX_AT(qxOptionStrategy, lowermove, 168);

static_assert(sizeof(qxTimeValue) == 28);
QX_AT(qxTimeValue, amount, 0);
QX_AT(qxTimeValue, rate, 8);
QX_AT(qxTimeValue, years, 16);
QX_AT(qxTimeValue, periods, 24);

static_assert(sizeof(qxBond) == 36);
QX_AT(qxBond, face, 0);
QX_AT(qxBond, price, 8);
QX_AT(qxBond, coupon, 16);
QX_AT(qxBond, payments, 24);
QX_AT(qxBond, maturity, 28);
