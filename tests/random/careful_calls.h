// Calls whose arguments belong together: pointers with counts, records that own their blocks,
// results of a stated size, and sequences without which a function would find nothing to do.
#ifndef QUORVEX_TESTS_RANDOM_CAREFUL_CALLS_H
#define QUORVEX_TESTS_RANDOM_CAREFUL_CALLS_H

#include "tests/random/call_table.h"

namespace qxrandom {

// Records that share no block with another.
void callAllocArray(Context& context, bool describeOnly);
void callReAllocArray(Context& context, bool describeOnly);
void callFreeArray(Context& context, bool describeOnly);
void callAllocBars(Context& context, bool describeOnly);
void callReAllocBars(Context& context, bool describeOnly);
void callFreeBars(Context& context, bool describeOnly);
void callCandleConstruct(Context& context, bool describeOnly);
void callTXT2Array(Context& context, bool describeOnly);
void callArrayPrintf(Context& context, bool describeOnly);
void callBars2PNF(Context& context, bool describeOnly);
void callBars2PNFhilo(Context& context, bool describeOnly);

// Work that grows with an argument.
void callT3(Context& context, bool describeOnly);
void callBondPricing(Context& context, bool describeOnly);
void callBondDuration(Context& context, bool describeOnly);

// Results of a stated size.
void callErrDesc(Context& context, bool describeOnly);
void callErrMessageBox(Context& context, bool describeOnly);
void callIEEEtoMS(Context& context, bool describeOnly);
void callMStoIEEE(Context& context, bool describeOnly);
void callFormatDate(Context& context, bool describeOnly);
void callJulianToDateTxt(Context& context, bool describeOnly);
void callJulianToTimeTxt(Context& context, bool describeOnly);

// Optimisation variables with their count.
void callOptVarCount(Context& context, bool describeOnly);
void callOptVarValue(Context& context, bool describeOnly);
void callOptVarString(Context& context, bool describeOnly);
void callOptVarStringLen(Context& context, bool describeOnly);

// The lasting order system, or one of its own that trades over other bars.
void callOrderSystemInit(Context& context, bool describeOnly);
void callBuyToOpen(Context& context, bool describeOnly);
void callSellToOpen(Context& context, bool describeOnly);
void callSellToClose(Context& context, bool describeOnly);
void callBuyToClose(Context& context, bool describeOnly);
void callProcessOrders(Context& context, bool describeOnly);

// Graphs keep what they are given.
void callGraphInit(Context& context, bool describeOnly);
void callGraphChartAdd(Context& context, bool describeOnly);
void callGraphSetSubwin(Context& context, bool describeOnly);
void callGraphPaintPicture(Context& context, bool describeOnly);

// Functions of a pane's record, which must be a fresh copy.
template <auto Function, typename Element>
struct OnPane {
  static void run(Context& context, bool describeOnly) {
    auto* pane = static_cast<qxGraphSubwin*>(randomBytes(context, sizeof(qxGraphSubwin)));
    if (pane != nullptr) qxGraphGetSubwin(&context.lasting.graph, pane, below(context.random, 6));
    finish<Function>(context, describeOnly, pane, Make<Element*>::value(context),
                     hostileInt(context.random));
  }
};

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_CAREFUL_CALLS_H
