/*
 * Quorvex: market analysis over caller-owned price series.
 *
 * Every function takes plain values, zero-terminated 8-bit strings and pointers to records that the
 * caller owns. Records are packed on 4-byte boundaries and must be zero-filled before first use.
 * The library allocates only the blocks inside records and releases them through the matching free
 * operation.
 *
 * Unless a function says otherwise:
 * - a result of type int32_t is a status: QX_SUCCESS or one of the negative codes below;
 * - a null record or string gives QX_ERR_INVALID_PARM (0 from functions that return a value);
 * - indexes and sizes count elements from 0; a negative start index counts as 0.
 *
 * Threads. The library starts no threads and takes no locks. Five values belong to the whole
 * process, and a call that writes one of them at the same time as another call reads or writes it
 * is a data race, whatever records the two work on:
 * - the max first valid: written by qxSetMaxFirstValid and qxSetFirstValid and by every function
 *   that sets the first valid index of an output (averages, indicators, moving statistics, breadth,
 *   relative performance, qxGroupArray, qxFormationFill, qxCrossOverFill and qxTurnFill); read by
 *   the same functions and by qxGetMaxFirstValid;
 * - the two-digit-year cutoff: written by qxSet2DigitYearCutoff, read wherever a year is read;
 * - the default date order: written by qxSetDefaultDateFormat, read by reports, listings, charts;
 * - the scale margins of graphs: written by qxGraphSetSubwinMargins, read by painting;
 * - the month names: written by qxGraphInit, read by painting.
 * Two threads must therefore not compute indicators at once, not even on different records, nor
 * may one begin a graph while another begins or paints one: the caller takes a lock of its own, or
 * uses processes. All other calls may run at once on different records and different files (dates,
 * statistics of a range, patterns at one bar, reading files, simulations, reports), and records
 * that no call changes may be shared. One record, and one output file, is for one thread at a time.
 */
#ifndef QUORVEX_H
#define QUORVEX_H

#include <stdint.h>

#if defined(_WIN32) && defined(QX_BUILD)
#define QX_API __declspec(dllexport)
#elif defined(_WIN32) && !defined(QX_STATIC)
#define QX_API __declspec(dllimport)
#elif defined(_WIN32)
#define QX_API
#else
#define QX_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Codes ---- */

/** Statuses. qxErrDesc gives their texts. */
enum {
  QX_SUCCESS = 0,
  QX_ERR_INVALID_PARM = -1,
  QX_ERR_FILE_OPEN = -2,
  QX_ERR_MALLOC = -3,
  QX_ERR_FILE_READ = -4,
  QX_ERR_FILE_WRITE = -5,
  QX_ERR_FILE_SEEK = -6,
  QX_ERR_FILE_EXISTS = -7,
  QX_ERR_FILE_NOT_FOUND = -8,
  QX_ERR_RECORD_NOT_FOUND = -9,
  QX_ERR_UNKNOWN = -10
};

/** Moving-average methods of qxMovingAverage and of every indicator that takes a method. */
enum {
  QX_MA_EXPONENTIAL = 0,
  QX_MA_LEAST_SQUARES = 1,
  QX_MA_SIMPLE = 2,
  QX_MA_WEIGHTED = 3,
  QX_MA_WELLES = 4,
  QX_MA_TRIANGULAR = 5,
  QX_MA_VARIABLE = 6,
  QX_MA_ZERO_LAG = 7
};

/** Date orders: how numeric dates are read and printed. */
enum { QX_ORDER_YMD = 0, QX_ORDER_MDY = 1, QX_ORDER_DMY = 2 };

/** Formats of price files, the `filetype` of a bar set. */
enum {
  QX_FILE_UNKNOWN = 0,
  QX_FILE_CSI = 1,
  QX_FILE_COMPUTRAC = 2,
  QX_FILE_DOW_JONES = 3,
  QX_FILE_FUTURE_SOURCE = 4,
  QX_FILE_TELECHART = 5,
  QX_FILE_TECHTOOLS = 6,
  QX_FILE_TEXT = 7,
  QX_FILE_AIQ = 8
};

/** Bar frequencies, the `frequency` of a bar set. */
enum {
  QX_FREQ_UNKNOWN = 0,
  QX_FREQ_INTRADAY = 1,
  QX_FREQ_DAILY = 2,
  QX_FREQ_WEEKLY = 3,
  QX_FREQ_MONTHLY = 4,
  QX_FREQ_QUARTERLY = 5,
  QX_FREQ_YEARLY = 6
};

/** Kinds of instrument, the `datatype` of a bar set. */
enum {
  QX_DATA_UNKNOWN = 0,
  QX_DATA_BOND = 1,
  QX_DATA_COMMODITY = 2,
  QX_DATA_MUTUAL_FUND = 3,
  QX_DATA_OPTION = 4,
  QX_DATA_STOCK = 5,
  QX_DATA_INDEX = 6
};

/** Option types, the `optiontype` of a bar set and the `type` of an option leg. */
enum { QX_OPTION_NONE = 0, QX_OPTION_CALL = 1, QX_OPTION_PUT = 2 };

/* ---- Records: series and bars ---- */

#pragma pack(push, 4)

/** One series of values (20 bytes). A record whose `data` is null is unallocated. */
typedef struct qxArray {
  double* data;       /**< the values, owned by the record */
  int32_t size;       /**< elements in use, never above datasize */
  int32_t datasize;   /**< elements allocated */
  int32_t firstvalid; /**< first meaningful element; those before it are warm-up */
} qxArray;

/** A set of price bars (548 bytes): seven series of equal size and the facts of their source. */
typedef struct qxBars {
  qxArray date;         /**< date numbers, see qxYMDtoDate */
  qxArray open;         /**< opening prices */
  qxArray high;         /**< high prices */
  qxArray low;          /**< low prices */
  qxArray close;        /**< closing prices */
  qxArray volume;       /**< volume */
  qxArray openint;      /**< open interest */
  int32_t barsize;      /**< bars in use, equal to every series' size */
  int32_t datasize;     /**< bars allocated, equal to every series' datasize */
  int32_t reccnt;       /**< records in the source file */
  char path[256];       /**< folder of the source file */
  char name[16];        /**< file or record name */
  char description[48]; /**< instrument description */
  char symbol[16];      /**< ticker symbol */
  char cusip[12];       /**< CUSIP identifier, empty when unknown */
  double begindate;     /**< date number of the file's first record, 0 when unknown */
  double enddate;       /**< date number of the file's last record, 0 when unknown */
  int32_t filetype;     /**< QX_FILE_... */
  int32_t frequency;    /**< QX_FREQ_... */
  int32_t datatype;     /**< QX_DATA_... */
  int32_t optiontype;   /**< QX_OPTION_... */
  double deliverydate;  /**< delivery date number of a future or option, 0 when none */
  double strikeprice;   /**< strike price of an option, 0 when none */
} qxBars;

/* ---- Records: candles ---- */

/** The classified candles of a bar set (32 bytes). A factor left at 0 takes its default. */
typedef struct qxCandles {
  uint8_t* codes;     /**< 4 bytes per bar: colour, body, upper shadow, lower shadow; the block
                           that qxCandleConstruct made and qxCandleFree releases */
  double shadowlong;  /**< factor above which a shadow is long, default 2.0 */
  double shadowshort; /**< factor below which a shadow is short, default 0.75 */
  double equality;    /**< relative tolerance of doji bodies and near prices, default 0.005 */
} qxCandles;

/* ---- Records: text files ---- */

/** Layout of a delimited text price file (56 bytes). Field numbers count from 1; 0 means absent. */
typedef struct qxTXTinfo {
  int32_t dt;       /**< field of the date */
  int32_t ti;       /**< field of the time; equal to dt when the date field holds both */
  int32_t op;       /**< field of the open price */
  int32_t hi;       /**< field of the high price */
  int32_t lo;       /**< field of the low price */
  int32_t cl;       /**< field of the closing price */
  int32_t vol;      /**< field of the volume */
  int32_t oi;       /**< field of the open interest */
  int32_t dtformat; /**< QX_ORDER_... of the dates */
  int32_t skip;     /**< header lines at the top of the file */
  char delimit[16]; /**< delimiter characters, zero-terminated when shorter than 16 */
} qxTXTinfo;

/* ---- Records: trading simulation ---- */

/** Kinds of order. */
enum { QX_KIND_EXIT = 1, QX_KIND_ENTRY = 2 };
/** Directions of orders (buy, sell) and of positions (long, short). */
enum { QX_BUY = 1, QX_SELL = 2, QX_LONG = 1, QX_SHORT = 2 };
/** Types of order. */
enum { QX_ORDER_MARKET = 1, QX_ORDER_STOP = 2, QX_ORDER_LIMIT = 3, QX_ORDER_CLOSE = 4 };
/** Times in force: this bar only, or until filled or cancelled (any value other than 1). */
enum { QX_FORCE_BAR = 1, QX_FORCE_GTC = 2 };
/** Market positions of an order system. */
enum { QX_MARKET_FLAT = 0, QX_MARKET_LONG = 1, QX_MARKET_SHORT = 2 };

/** One order (80 bytes). */
typedef struct qxOrder {
  char name[20];       /**< zero-terminated */
  char fromname[20];   /**< exits: the entry whose positions it may close, empty for any */
  uint32_t volume;     /**< units to trade */
  int32_t kind;        /**< QX_KIND_... */
  int32_t direction;   /**< QX_BUY or QX_SELL */
  double price;        /**< stop or limit price */
  int32_t ordertype;   /**< QX_ORDER_MARKET, _STOP, _LIMIT or _CLOSE */
  int32_t timeinforce; /**< QX_FORCE_... */
  double date;         /**< date number of the bar on which it was placed */
  int32_t cancelled;   /**< 1 when cancelled or, for exits, filled */
} qxOrder;

/** One side of a trade: an open position or an exit (52 bytes). */
typedef struct qxPosition {
  char name[20];     /**< blanks, with the order's name and its terminator over the start */
  int32_t direction; /**< position: QX_LONG or QX_SHORT; exit: QX_BUY or QX_SELL */
  int32_t bar;       /**< bar index of the fill */
  double date;       /**< date number of the fill */
  double price;      /**< price of the fill, on the tick grid */
  int32_t volume;    /**< units at entry, or units closed */
  int32_t remaining; /**< units still open; 0 in an exit */
} qxPosition;

/** A closed trade (104 bytes): the position as it stood, and its exit. */
typedef struct qxTrade {
  qxPosition entry;
  qxPosition exit;
} qxTrade;

/** Statistics of the long, the short or all trades (188 bytes). */
typedef struct qxTradeStats {
  double netprofit;
  double grossprofit;
  double grossloss; /**< 0 or negative */
  int32_t trades;
  double pctprofitable; /**< percent */
  int32_t winners;
  int32_t losers;
  double largestwin;
  double largestloss;
  double averagewin;
  double averageloss;
  double winlossratio; /**< average win / average loss, absolute */
  double averagetrade;
  int32_t maxwinners; /**< most consecutive winners */
  int32_t maxlosers;  /**< most consecutive losers */
  double winnerbars;  /**< average bars in winners */
  double loserbars;   /**< average bars in losers */
  double maxdrawdown; /**< 0 or negative */
  double profitfactor;
  double maxcontracts;    /**< largest volume held */
  double accountsize;     /**< account size required */
  double returnonaccount; /**< percent */
  double prr;             /**< pessimistic return ratio */
  double openprofit;      /**< open position profit */
  int32_t winnerbarsum;   /**< running sum of bars in winners */
  int32_t loserbarsum;    /**< running sum of bars in losers */
  int32_t winstreak;      /**< current winning streak */
  int32_t losestreak;     /**< current losing streak */
} qxTradeStats;

/** One simulation (1364 bytes). */
typedef struct qxOrderSystem {
  char name[80];      /**< printed in reports */
  double tick;        /**< minimum price move, initially 0.001 */
  double tickvalue;   /**< money value of one tick per unit, initially 0.001 */
  double unitcost;    /**< cost per unit of a trade */
  double sidecost;    /**< cost per side of a trade */
  double deduction;   /**< fraction of the profit that is deducted */
  double margin;      /**< margin in percent, initially 100.0 */
  int32_t delay;      /**< seconds an order must age; only whole days count */
  int32_t gapfill;    /**< non-zero: a passed stop or limit fills at the open */
  int32_t reverse;    /**< non-zero: an entry closes the other direction, initially 1 */
  int32_t pyramid;    /**< non-zero: entries may add to a position */
  int32_t allowlong;  /**< zero: qxBuyToOpen ignores its order, initially 1 */
  int32_t allowshort; /**< zero: qxSellToOpen ignores its order, initially 1 */
  int32_t bar;        /**< current bar, initially -1 */
  int32_t marketpos;  /**< QX_MARKET_... */
  int32_t longvol;    /**< open volume, long */
  int32_t shortvol;   /**< open volume, short */
  int32_t netvol;     /**< absolute difference of the two */
  double avgprice;    /**< average entry price of the larger side */
  double lastentry;   /**< date number of the last entry */
  int32_t counter;    /**< cleared with the position fields */
  int32_t longbars;   /**< bars since the oldest open long entry */
  int32_t shortbars;  /**< bars since the oldest open short entry */
  int32_t posbars;    /**< the one of the net side */
  qxTradeStats longstats;
  qxTradeStats shortstats;
  qxTradeStats netstats;
  qxOrder* orders;       /**< pending orders */
  qxPosition* positions; /**< open positions */
  qxTrade* trades;       /**< closed trades */
  int32_t ordercap;
  int32_t ordercount;
  int32_t positioncap;
  int32_t positioncount;
  int32_t tradecap;
  int32_t tradecount;
  qxBars bars; /**< copy of the caller's record; its series stay the caller's */
} qxOrderSystem;

/** One optimisation variable (36 bytes). */
typedef struct qxOptVar {
  double from;   /**< first value */
  double to;     /**< last value */
  double step;   /**< increment; 0 means the single value `from` */
  int32_t count; /**< number of values, set by qxOptVarCount */
  double value;  /**< current value, set by qxOptVarValue */
} qxOptVar;

/* ---- Records: options and bonds ---- */

/** One option of a strategy (28 bytes). */
typedef struct qxOptionLeg {
  double premium;    /**< price of the option per unit of the underlying */
  double strike;     /**< strike price */
  int32_t type;      /**< QX_OPTION_CALL or QX_OPTION_PUT */
  double expiration; /**< date number of the expiration */
} qxOptionLeg;

/** An option strategy (176 bytes): the price and the legs are given, the rest is computed. */
typedef struct qxOptionStrategy {
  double price;       /**< price of the underlying */
  qxOptionLeg long1;  /**< first bought option */
  qxOptionLeg long2;  /**< second bought option */
  qxOptionLeg short1; /**< first sold option */
  qxOptionLeg short2; /**< second sold option */
  double maxprofit;   /**< maximum profit, 0 when unlimited */
  double riskreward;  /**< maximum loss / maximum profit, 0 for straddles and strangles */
  double maxloss;     /**< maximum loss, 0 when unlimited */
  double upper;       /**< upper break-even price */
  double lower;       /**< lower break-even price, for spreads the same */
  double uppermove;   /**< (upper - price) / price */
  double lowermove;   /**< (lower - price) / price */
} qxOptionStrategy;

/** A sum at compound interest, or an annuity (28 bytes). */
typedef struct qxTimeValue {
  double amount;   /**< present value, principal or payment */
  double rate;     /**< percent per year */
  double years;    /**< term in years; for annuities the number of payments */
  int32_t periods; /**< compounding periods per year */
} qxTimeValue;

/** A bond or a Treasury bill (36 bytes). */
typedef struct qxBond {
  double face;      /**< face value */
  double price;     /**< price */
  double coupon;    /**< coupon amount per year */
  int32_t payments; /**< coupon payments per year */
  double maturity;  /**< date number of the maturity */
} qxBond;

/* ---- Records: graphs ---- */

/** Chart styles: how each shown bar of a chart is drawn. */
enum {
  QX_CHART_NONE = 0,      /**< nothing; a chart that only carries a scale */
  QX_CHART_HLC = 1,       /**< high-low line with a close tick */
  QX_CHART_OHLC = 2,      /**< as above, with an open tick */
  QX_CHART_CANDLE = 3,    /**< candlestick */
  QX_CHART_TRADES = 4,    /**< arrows from a trade-marker series, see qxCreateTradeGraph */
  QX_CHART_LINE = 5,      /**< a line through the values that are not 0 */
  QX_CHART_MARKER = 6,    /**< a small square around each value */
  QX_CHART_HISTOGRAM = 7, /**< a rectangle from each value to the base */
  QX_CHART_AREA = 8,      /**< the filled area between the values and the base */
  QX_CHART_STEP = 9       /**< a line in steps through the values that are not 0 */
};

/** Scale flags of a chart, to be combined. */
enum { QX_SCALE_LOG = 1, QX_SCALE_INVERTED = 2 };

/** Modes of a scale's minimum and maximum; any value but the two last keeps the stored one. */
enum { QX_SCALE_KEEP = 0, QX_SCALE_SHOWN = 1, QX_SCALE_WHOLE = 2 };

/** Kinds of shape. */
enum { QX_SHAPE_SEGMENT = 1, QX_SHAPE_RECTANGLE = 2, QX_SHAPE_ELLIPSE = 3 };

/** Pen styles, those of the Windows graphics interface. */
enum {
  QX_PEN_SOLID = 0,
  QX_PEN_DASH = 1,
  QX_PEN_DOT = 2,
  QX_PEN_DASH_DOT = 3,
  QX_PEN_DASH_DOT_DOT = 4,
  QX_PEN_NULL = 5,
  QX_PEN_INSIDE_FRAME = 6
};

/** What lies under a point; the first three are also the kinds that can be selected. */
enum {
  QX_HIT_NOTHING = 0,
  QX_HIT_CHART = 1,
  QX_HIT_LINE = 2,
  QX_HIT_SHAPE = 3,
  QX_HIT_BARS = 4,   /**< the bar area, on no element */
  QX_HIT_BORDER = 5, /**< the gap between two panes */
  QX_HIT_TITLE = 6,  /**< a pane's title strip */
  QX_HIT_HEADER = 7,
  QX_HIT_FOOTER = 8,
  QX_HIT_DATES = 9 /**< the date-axis strip */
};

/** A rectangle in device units (16 bytes); the right and bottom edges lie outside it. */
typedef struct qxRect {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
} qxRect;

/** One price chart or indicator line of a pane (628 bytes). Its series and bars are copies of the
 * caller's records, whose values stay the caller's and must outlive the graph's use of them. */
typedef struct qxGraphChart {
  int32_t style;      /**< QX_CHART_... */
  int32_t scaleflags; /**< QX_SCALE_LOG, QX_SCALE_INVERTED */
  int32_t minmode;    /**< where the scale's minimum comes from, QX_SCALE_... */
  int32_t maxmode;    /**< where the scale's maximum comes from, QX_SCALE_... */
  double maximum;     /**< top of the scale; painting stores what it finds */
  double minimum;     /**< bottom of the scale */
  int32_t scalechart; /**< chart of the same pane whose scale this one shares */
  uint32_t colour;    /**< colours are 0x00BBGGRR */
  uint32_t colour2;
  uint32_t colour3;
  int32_t penwidth; /**< pixels */
  int32_t penstyle; /**< QX_PEN_..., or the 4 x 4 fill pattern of histograms and areas */
  int32_t selected; /**< 1 when marked as selected */
  qxArray series;   /**< the values, or the closes of the bars */
  qxBars bars;      /**< the bars, may be empty for styles 5 to 9 */
} qxGraphChart;

/** A horizontal line at a price (28 bytes). */
typedef struct qxGraphLine {
  int32_t chart;    /**< chart of the same pane whose scale places it */
  double price;     /**< value at which it stands */
  int32_t colour;   /**< 0x00BBGGRR */
  int32_t penwidth; /**< pixels */
  int32_t penstyle; /**< QX_PEN_... */
  int32_t selected; /**< 1 when marked as selected */
} qxGraphLine;

/** A shape between two points (56 bytes): x is a bar position, with fractions, and y a value. */
typedef struct qxGraphShape {
  int32_t chart; /**< chart of the same pane whose scale places it */
  int32_t kind;  /**< QX_SHAPE_... */
  double x1;     /**< never above x2 when added by qxGraphShapeAdd */
  double y1;
  double x2;
  double y2;
  int32_t colour;   /**< 0x00BBGGRR */
  int32_t penwidth; /**< pixels */
  int32_t penstyle; /**< QX_PEN_... */
  int32_t selected; /**< 1 when marked as selected */
} qxGraphShape;

/** One pane of a graph (364 bytes). */
typedef struct qxGraphSubwin {
  qxRect pane;         /**< set by painting, title strip included */
  int32_t height;      /**< share of the height, relative to the other panes'; 0 hides the pane */
  uint32_t background; /**< colour behind the charts */
  char title[256];     /**< text of the title strip */
  int32_t titleshown;  /**< non-zero: the title strip is on */
  int32_t axischart;   /**< chart whose scale the first value axis shows */
  uint32_t gridcolour; /**< grid of the first value axis */
  int32_t gridwidth;   /**< pixels; 0 for no grid */
  int32_t gridstyle;   /**< QX_PEN_... */
  int32_t axischart2;  /**< chart whose scale the second value axis shows */
  uint32_t gridcolour2;
  int32_t gridwidth2;
  int32_t gridstyle2;
  qxGraphChart* charts; /**< growable array of charts */
  int32_t chartcap;     /**< charts allocated */
  int32_t chartcount;   /**< charts in use */
  qxGraphLine* lines;   /**< growable array of lines */
  int32_t linecap;
  int32_t linecount;
  qxGraphShape* shapes; /**< growable array of shapes */
  int32_t shapecap;
  int32_t shapecount;
} qxGraphSubwin;

/** One chart picture (620 bytes): a stack of panes and what they have in common. */
typedef struct qxGraph {
  int32_t initialised;   /**< 1 after qxGraphInit */
  int32_t barwidth;      /**< pixels for each bar, initially 4 */
  int32_t firstshown;    /**< first bar in view */
  int32_t lastshown;     /**< last bar in view */
  qxRect area;           /**< drawing area; all 0: painting takes it from the device */
  qxRect headerarea;     /**< header strip, set by painting like the four below */
  qxRect footerarea;     /**< footer strip */
  qxRect datearea;       /**< date-axis strip */
  qxRect valuearea;      /**< value-axis strip */
  qxRect bararea;        /**< where the bars are; its left edge is that of the first shown bar */
  uint32_t background;   /**< colours are 0x00BBGGRR */
  uint32_t fill;         /**< brush colour */
  int32_t axisshown;     /**< value axis shown, initially 1 */
  int32_t axisshown2;    /**< second value axis shown, initially 1 */
  int32_t hgap;          /**< horizontal gap around panes in pixels, initially 2 */
  int32_t vgap;          /**< vertical gap between panes in pixels, initially 2 */
  char axisface[32];     /**< font face of the axes */
  float axissize;        /**< font size in points, initially 8 */
  int32_t axisreserved;  /**< 0 */
  uint32_t axiscolour;   /**< axis texts and pen */
  int32_t ticklength;    /**< pixels, initially 6 */
  int32_t datesshown;    /**< date axis shown, initially 1 */
  int32_t gridwidth;     /**< pen width of the vertical grid, 0 for no grid; initially 1 */
  int32_t gridstyle;     /**< QX_PEN_..., initially dotted */
  uint32_t gridcolour;   /**< vertical grid */
  char titleface[32];    /**< second font: titles and scales */
  float titlesize;       /**< font size in points, initially 8 */
  int32_t titlereserved; /**< 0 */
  uint32_t titlecolour;  /**< second text colour and pen of scale lines */
  char headertext[256];
  uint32_t headerback;    /**< background of the header */
  char headerface[32];    /**< font face of the header */
  float headersize;       /**< font size in points, initially 8 */
  int32_t headerreserved; /**< 0 */
  uint32_t headercolour;  /**< text of the header */
  int32_t headershown;    /**< header and footer shown, initially 1 */
  int32_t titleheight;    /**< title-strip height in pixels; 0: painting sets it from the font */
  uint32_t footerback;    /**< background of the footer */
  char footerface[32];    /**< font face of the footer */
  float footersize;       /**< font size in points, initially 8 */
  int32_t footerreserved; /**< 0 */
  uint32_t footercolour;  /**< text of the footer */
  qxGraphSubwin* subwins; /**< growable array of panes, from top to bottom */
  int32_t subwincap;      /**< panes allocated */
  int32_t subwincount;    /**< panes in use */
} qxGraph;

/** The answer of qxGraphGetXYinfo (40 bytes). */
typedef struct qxGraphInfo {
  int32_t subwin;  /**< pane under the point */
  int32_t element; /**< index of the chart, line or shape */
  int32_t kind;    /**< QX_HIT_... */
  int32_t x;       /**< x of the bar under the point, snapped to the bar's line */
  double bar;      /**< bar position of the point, with fractions */
  int32_t reserved[4];
} qxGraphInfo;

#pragma pack(pop)

/* ---- Series and bar records ---- */

/** Allocates a series of `size` zeros and sets size and datasize to it, firstvalid to 0. More than
 * 2^30 elements are cut to 2^30. An existing block is not released first. On failure the record is
 * cleared: QX_ERR_MALLOC; a negative size: QX_ERR_INVALID_PARM, nothing changed. */
QX_API int32_t qxAllocArray(qxArray* array, int32_t size);

/** Grows a series to `size` elements, keeping values and firstvalid; the new tail is not cleared.
 * An unallocated record is allocated; a size within the capacity only sets the size. QX_ERR_MALLOC
 * leaves the record as it was; a negative size: QX_ERR_INVALID_PARM. */
QX_API int32_t qxReAllocArray(qxArray* array, int32_t size);

/** Sets the elements in use. QX_ERR_MALLOC when `size` exceeds the capacity, with nothing changed;
 * a negative size: QX_ERR_INVALID_PARM. */
QX_API int32_t qxReSizeArray(qxArray* array, int32_t size);

/** Releases the block and clears the record. Null is ignored. */
QX_API void qxFreeArray(qxArray* array);

/** Copies the whole allocated extent, the size and firstvalid. An unallocated destination is
 * allocated at the source's capacity; an allocated one is never grown, and takes what it can hold.
 * QX_ERR_MALLOC when the allocation fails. */
QX_API int32_t qxCopyArray(const qxArray* source, qxArray* destination);

/** Element `index`, or 0.0 outside the series. */
QX_API double qxGetArrayItem(const qxArray* array, int32_t index);

/** Stores element `index`; outside the series it does nothing. */
QX_API void qxSetArrayItem(qxArray* array, int32_t index, double value);

/** Sets firstvalid and raises the library-wide max first valid to it. Returns that maximum. */
QX_API int32_t qxSetFirstValid(qxArray* array, int32_t index);

/** Sets the max first valid, also downwards, usually to 0 before a batch of computations. Returns
 * the value. */
QX_API int32_t qxSetMaxFirstValid(int32_t value);

/** The largest first valid index set since the last qxSetMaxFirstValid; 0 at load. From that bar on
 * every output computed since is valid. */
QX_API int32_t qxGetMaxFirstValid(void);

/** Allocates the seven series of a bar set with `size` zeros each; the descriptive fields stay.
 * More than 2^30 bars are cut to 2^30. On failure the whole record is cleared: QX_ERR_MALLOC; a
 * negative size: QX_ERR_INVALID_PARM, nothing changed. */
QX_API int32_t qxAllocBars(qxBars* bars, int32_t size);

/** Grows the seven series one after the other; new tails are not cleared. At the first failure
 * QX_ERR_MALLOC: series already grown stay grown, barsize and datasize keep their values. An
 * unallocated set is allocated; a size within the capacity only sets the sizes. */
QX_API int32_t qxReAllocBars(qxBars* bars, int32_t size);

/** Sets the bars in use, in the set and its seven series. QX_ERR_MALLOC when `size` exceeds the
 * capacity, with nothing changed; a negative size: QX_ERR_INVALID_PARM. */
QX_API int32_t qxReSizeBars(qxBars* bars, int32_t size);

/** Releases the seven series and clears the record. Null is ignored. */
QX_API void qxFreeBars(qxBars* bars);

/** Copies a bar set: the descriptive fields and each series as qxCopyArray does. QX_ERR_MALLOC when
 * an unallocated destination cannot be allocated. */
QX_API int32_t qxCopyBars(const qxBars* source, qxBars* destination);

/** Copies the descriptive fields (path .. strikeprice, reccnt), neither series nor sizes. */
QX_API void qxCopyBarInfo(const qxBars* source, qxBars* destination);

/** The first `digits` decimals of |value| as an integer, cut and not rounded: 0.29 with 2 digits is
 * 28, since the double lies below 0.29. 0 when the fraction is at most 2.220446049250313e-16, and
 * for NaN and infinities; a result too large saturates. */
QX_API int32_t qxDecimals(double value, int32_t digits);

/** Index of the first bar dated at or after `date`, or barsize. Dates must ascend. */
QX_API int32_t qxFindDate(const qxBars* bars, double date);

/* ---- Status codes and number conversions ---- */

/** Copies the text of a status into `buffer` (at least 17 bytes), zero-terminated, and returns its
 * length. A code outside -10..0 reads "Unknown". */
QX_API int32_t qxErrDesc(int32_t code, char* buffer);

/** Shows a modal message box with the text of `code`, a blank and `text`, cut to 1023 characters.
 * Returns what the box returns. Off Windows the message goes to standard error and 1 is returned.
 */
QX_API int32_t qxErrMessageBox(int32_t code, const char* text);

/** Converts the IEEE single at `source` to Microsoft Binary Format at `destination` (4 bytes each,
 * may be the same). Negative zero becomes zero. The exponent is not range-checked: it wraps. */
QX_API int32_t qxIEEEtoMS(const void* source, void* destination);

/** Converts a Microsoft Binary Format single at `source` to an IEEE single at `destination` (4
 * bytes each, may be the same). A zero exponent byte reads as 0.0. The exponent wraps. */
QX_API int32_t qxMStoIEEE(const void* source, void* destination);

/* ---- Series transforms ---- */

/** Linear map: out[i] = in[i] * multiplier + addend for i from max(first, firstvalid of in) to the
 * end. In place when both records hold the same storage: earlier elements then stay, and an empty
 * series returns 0. Otherwise the output is prepared as an indicator's, and its failure returned.
 * The output's first valid index is not set. */
QX_API int32_t qxMultAddArray(const qxArray* in, qxArray* out, double multiplier, double addend,
                              int32_t first);

/** Rescales low..high to begin at targetLow: out[i] = targetLow + (in[i] - low) * factor, with
 * factor = |targetHigh - targetLow| / |high - low|, so that a target given from high to low still
 * scales upwards. When low and high are both 0 they become the minimum and maximum of the input
 * from the first element mapped to its last (qxArrayStats; skipZeros leaves zeros out of the
 * minimum). Range, in-place form, output and statuses as for qxMultAddArray; low = high divides by
 * zero. */
QX_API int32_t qxScaleArray(const qxArray* in, qxArray* out, double low, double high,
                            double targetLow, double targetHigh, int32_t skipZeros, int32_t first);

/** Shifts the values along the index, by `count` elements towards higher ones when it is positive,
 * towards lower ones when it is negative. firstvalid moves along, within 0 .. datasize. Upwards
 * the size grows within the capacity, what passes it is lost, and the elements set free are 0.0;
 * downwards the first elements are lost and the size shrinks. */
QX_API void qxShiftArray(qxArray* array, int32_t count);

/** Sums a series, such as a volume, within each calendar period: out[k] is the sum over period k.
 * - bars: their dates tell the periods; they and the input are walked to the shorter end;
 * - frequency: QX_FREQ_DAILY .. QX_FREQ_YEARLY. Against the bar before, a day begins when the
 *   whole day differs, a week when the weekday (from Monday) falls or the days are 7 or more
 *   apart, a month or year when it differs, a quarter with another year or a step into April, July
 *   or October.
 * The output may hold the input's storage; unallocated, it is allocated at the input's size.
 * Elements before the input's firstvalid take no part; a period that begins before it adds to what
 * its element holds. The size becomes the number of periods, and firstvalid the first period that
 * begins with a valid element (0 without one). A full output ends the walk. QX_ERR_INVALID_PARM
 * for another frequency, bars without dates, an empty input or an output without capacity. */
QX_API int32_t qxGroupArray(const qxBars* bars, const qxArray* in, qxArray* out, int32_t frequency);

/* ---- Bar compression ---- */

/*
 * A merged bar has the open of the first bar, the highest high, the lowest low, the close and the
 * date of the last bar, and the sums of volume and of open interest.
 */

/** Merges the `period` bars that end at bar `index`, or those there are from bar 0 on. Extremes and
 * sums are those of qxArrayStats; a null address leaves its result out. QX_ERR_INVALID_PARM for an
 * index outside the set or a period below 1. */
QX_API int32_t qxGroupBars(const qxBars* bars, double* open, double* high, double* low,
                           double* close, double* volume, double* openint, int32_t period,
                           int32_t index);

/** Rolling merge: each destination bar from `first` on is the merge of the `period` source bars
 * that end there (qxGroupBars), with the same date. The number of bars stays that of the source,
 * within the destination's capacity; an unallocated destination gets the source's, and takes its
 * descriptive fields. May work in place. QX_ERR_INVALID_PARM for an unallocated source or a period
 * below 1. */
QX_API int32_t qxGroupBarsPeriods(const qxBars* source, qxBars* destination, int32_t period,
                                  int32_t first);

/** The same as qxGroupBarsPeriods. */
QX_API int32_t qxGroupBarsArray(const qxBars* source, qxBars* destination, int32_t period,
                                int32_t first);

/** Merges bars by calendar period, as qxGroupArray tells them.
 * - frequency: QX_FREQ_DAILY .. QX_FREQ_YEARLY, stored in the destination;
 * - start, end: dates of the bars to merge, both included; an end of 0 means the last bar. The
 *   first bar at or after the start is taken even when it lies beyond the end.
 * An unallocated destination is allocated at the source's capacity; the descriptive fields are
 * copied. Its size becomes the number of merged bars, 0 when no bar lies at or after the start; a
 * full destination ends the merge with its last bar complete. May work in place; when the two
 * records share their date storage, the source record becomes a copy of the destination's.
 * QX_ERR_INVALID_PARM for another frequency or an unallocated source. */
QX_API int32_t qxGroupBarsDate(qxBars* source, qxBars* destination, int32_t frequency, double start,
                               double end);

/** Merges intraday bars into longer ones: a new bar begins with every day, and `seconds` or more
 * after the first bar of the group, by whole seconds of the day. The frequency field stays the
 * source's; all else is as for qxGroupBarsDate. */
QX_API int32_t qxGroupBarsTime(qxBars* source, qxBars* destination, int32_t seconds, double start,
                               double end);

/* ---- Series text ---- */

/** Reads one column of a delimited text file into a series, which is allocated (an existing block
 * is not released first). The first `skipLines` lines are passed over, and so are empty ones; every
 * other line gives an element: its field number `column`, from 1, fields being separated by runs of
 * `delimiters`, or 0.0 where the field is missing or no number. Lines are read 254 characters at
 * most. `fileName` is used as it is. QX_ERR_FILE_OPEN, QX_ERR_MALLOC, and QX_ERR_FILE_READ when
 * reading fails. */
QX_API int32_t qxTXT2Array(const char* fileName, qxArray* array, const char* delimiters,
                           int32_t skipLines, int32_t column);

/** Prints series side by side, once through `format` for each index from `start` to the smaller of
 * `end` and the last index of the longest series, both included. No line end is added: a format
 * ends in one of its own. `header`, which may be null, is printed first; a percent sign in it is
 * written "%%". `fileName` is used as it is ("STDOUT" is a file of that name) and appended to when
 * `append` is non-zero.
 *
 * A conversion runs from "%" to the first f, i, r or u, else to the first d; "%%" is a percent
 * sign. One qxArray address follows `format` for each conversion that is not an r, in their order;
 * a series shorter than the index prints nothing. Flags, width and precision (at most 4096) are as
 * in printf; other characters of a conversion are ignored.
 *
 *     %8.2f    the element
 *     %i %u %d the element, truncated to an integer
 *     %4r      the index itself
 *     %CYMDi   the element as a date, 1999/03/15; so %MDCYi and %DMCYi, and %YMDi, %MDYi, %DMYi
 *              with two digits of the year; any other character before the i, as in %CYMD-i, leaves
 *              the slashes out
 *     %HMi     its time with seconds, 14:30:00; %HMSi without them, 14:30; %HM-i and %HMS-i without
 *              colons
 *
 * QX_ERR_FILE_OPEN when the file cannot be opened; QX_ERR_FILE_WRITE when what was printed is lost;
 * QX_ERR_INVALID_PARM for a null series. */
QX_API int32_t qxArrayPrintf(const char* fileName, int32_t append, int32_t start, int32_t end,
                             const char* header, const char* format, ...);

/* ---- Calendar ---- */

/*
 * A date number is a double: whole days since 30 December 1899 (31 December 1899 is 1, 1 January
 * 1900 is 2) on the proleptic Gregorian calendar, plus the time of day as a fraction of 86,400
 * seconds. Below day 0 the time is subtracted, so that the fraction's magnitude is still the time
 * of day. A number in [0, 1) is a pure time; 0.0 stands for "no date" where a date may be absent.
 *
 * Two-digit years: wherever a function takes a year, a year below 100 (negative ones included)
 * means 2000 + year when it is below the cutoff (initially 20), else 1900 + year. So 19 is 2019 and
 * 20 is 1920. Years 1 to 100 of the calendar cannot be named.
 */

/** Sets the library-wide cutoff of two-digit years. Values outside 0 to 99 are ignored. */
QX_API void qxSet2DigitYearCutoff(int32_t cutoff);

/** 1 when the year is a leap year of the Gregorian calendar, else 0. Two-digit years are expanded.
 */
QX_API int32_t qxIsLeapYear(int32_t year);

/** Date number of 31 December of a year: 365 y + y / 4 - y / 100 + y / 400 - 693594 with divisions
 * truncated toward zero, y being the year after the two-digit rule. qxYearToDays(1899) is 1. */
QX_API double qxYearToDays(int32_t year);

/** Date number of a calendar date and time of day. Year, month and day all 0 give a pure time.
 * 0.0 when qxDateValidate refuses the parts; 30 December 1899, 0:00, is 0.0 too. The year 100 is
 * counted like 2000. */
QX_API double qxYMDtoDate(int32_t year, int32_t month, int32_t day, int32_t hour, int32_t minute,
                          int32_t second);

/** Date number of a date written as one decimal number YYMMDD, YYYMMDD or YYYYMMDD. A year of 100
 * to 1899 counts from 1900, so 1000101 is 1 January 2000; a year below 100 follows the two-digit
 * rule. 0.0 when it is no date. */
QX_API double qxNumToDate(int32_t number);

/** Time fraction of a time of day written as one decimal number HHMMSS; 0.0 when it is no time. */
QX_API double qxNumToTime(int32_t number);

/** Splits a date number. Each address may be null.
 *
 * The second of the day is rounded up without tolerance, ceil(|fraction| * 86400): a fraction a
 * hair above a whole second reads as the next one, and a fraction next to 1 gives hour 24 of the
 * same day. Date numbers before the year 101 give no meaningful date; month and day may then be
 * left unwritten. */
QX_API void qxDateToYMD(double date, int32_t* year, int32_t* month, int32_t* day, int32_t* hour,
                        int32_t* minute, int32_t* second);

/** One part of a date number as qxDateToYMD splits it. The first letter of `part`, in any case,
 * selects it: D day, H hour, M month, N minute, S second, Y year. Any other gives 0. */
QX_API int32_t qxDatePart(const char* part, double date);

/** Difference, second minus first. The first letter of `unit`, in any case: D counts whole days
 * between the two days, times ignored; S counts the seconds between the two times of day (each
 * rounded up as in qxDateToYMD), days ignored. Any other gives 0. Saturates at 32 bits. */
QX_API int32_t qxDateDiff(const char* unit, double first, double second);

/** Day of the week: 0 Monday to 6 Sunday. */
QX_API int32_t qxDayOfWeek(double date);

/** 1 when the parts name a day of the calendar (any year, months and days checked, two-digit years
 * expanded) or are all 0 for a pure time, and the time lies in 0:00:00 to 23:59:59; else 0. */
QX_API int32_t qxDateValidate(int32_t year, int32_t month, int32_t day, int32_t hour,
                              int32_t minute, int32_t second);

/* ---- Date and time strings ---- */

/*
 * A date order says which part of a numeric date comes first: QX_ORDER_YMD, QX_ORDER_MDY or
 * QX_ORDER_DMY. Any other order counts as QX_ORDER_YMD.
 *
 * How a date text is read. It is cut into at most 8 fields of at most 8 characters: runs of letters
 * and runs of digits, everything else separating. (A text that begins with a separator has an empty
 * first field.) Fields 1 to 3 are the date in the given order, 4 to 6 hour, minute and second; a
 * field's leading digits count, none give 0. A month may be named in English, by its first three
 * letters or more. Years follow the two-digit rule. A last field that begins with P, after the
 * date, adds 12 to an hour below 12; a morning marker changes nothing, so 12:30 AM is 12:30.
 *
 * Compact forms: a text of one field is YYMMDD or YYYYMMDD, MMDDYY or MMDDYYYY, DDMMYY or DDMMYYYY;
 * a second field, if it is the last, is HHMMSS.
 */

/** Sets the library-wide default date order (initially QX_ORDER_YMD), in which reports and listings
 * print dates: yyyy/mm/dd, mm/dd/yyyy or dd/mm/yyyy. Other values are ignored. */
QX_API void qxSetDefaultDateFormat(int32_t order);

/** Reads a date text, with or without time. The parts are stored (each address may be null) whether
 * or not they are valid. Returns 1 when qxDateValidate accepts them, else 0. */
QX_API int32_t qxDateStrToYMD(const char* text, int32_t order, int32_t* year, int32_t* month,
                              int32_t* day, int32_t* hour, int32_t* minute, int32_t* second);

/** 1 when qxDateStrToYMD accepts the text, else 0. */
QX_API int32_t qxDateStrValidate(const char* text, int32_t order);

/** Date number of a date text, or 0.0 when qxDateStrToYMD does not accept it. */
QX_API double qxDateStrToDate(const char* text, int32_t order);

/** Reads a time text: up to three numbers (hour, minute, second) from the first digit on, missing
 * ones 0. A number ends after two digits or at any other character; of two separators in a row the
 * second ends an empty number, so "9: 30" is 9:00:30. A letter P anywhere adds 12 to an hour below
 * 12. The parts are stored (each address may be null) whether or not they are valid. Returns 1 when
 * they are a time of day, else 0; a text without digits is 0:00:00 and valid. */
QX_API int32_t qxTimeStrToHMS(const char* text, int32_t* hour, int32_t* minute, int32_t* second);

/** Time fraction of a time text, or 0.0 when qxTimeStrToHMS does not accept it. */
QX_API double qxTimeStrToTime(const char* text);

/** Writes a date number as text under a picture, zero-terminated, and returns the number of
 * characters. In the picture, in any case, a run of one letter being one token:
 *
 *     d     day           one letter without a leading zero, two or more with it (so for h m n s)
 *     h     hour          1 to 12 when the picture holds an A anywhere, else 0 to 23
 *     m     month         but the minute when an h has occurred since the last m or n
 *     n     minute
 *     s     second
 *     y     year          exactly four letters print the whole year, else its last two digits
 *     a     AM or PM      spelled out in the picture: A/P, AM/PM or any such three or five
 *                         characters that begin with A; the part before or after the slash
 *
 * Other characters are copied. qxFormatDate(36586.75, "mm/dd/yyyy h:nn AM/PM", out) writes
 * 03/01/2000 6:00 PM. The length of `output` is not passed: it needs 2 characters for each token,
 * 11 for a year of four letters, one for each other character and the terminator; 64 are enough for
 * every picture that the library itself uses. */
QX_API int32_t qxFormatDate(double date, const char* picture, char* output);

/* ---- Julian text dates ---- */

/*
 * The older date interface: the same date numbers, with 16-bit parts and layout codes for text. "s"
 * stands for the caller's separator.
 *
 *     dates  1 YYsMMsDD  2 YYYYsMMsDD  3 MMsDDsYY  4 MMsDDsYYYY   5 DDsMMsYY  6 DDsMMsYYYY
 *            7 YYMMDD    8 YYYYMMDD    9 MMDDYY   10 MMDDYYYY    11 DDMMYY   12 DDMMYYYY
 *     times  1 HHsNNsSS  2 HHsNN       3 HHNNSS    4 HHNN
 */

/** qxYMDtoDate of a date. */
QX_API double qxYMDToJulian(int16_t year, int16_t month, int16_t day);

/** qxYMDtoDate of a time of day. */
QX_API double qxHMSToJulian(int16_t hour, int16_t minute, int16_t second);

/** The date of a date number as qxDateToYMD splits it; each address may be null. Values beyond 16
 * bits saturate; parts that are no date are 0. */
QX_API void qxJulianToYMD(double date, int16_t* year, int16_t* month, int16_t* day);

/** The time of a date number as qxDateToYMD splits it; each address may be null. */
QX_API void qxJulianToHMS(double date, int16_t* hour, int16_t* minute, int16_t* second);

/** qxDayOfWeek: 0 Monday to 6 Sunday. */
QX_API int32_t qxJulianDOW(double date);

/** Whole days, second minus first. */
QX_API int32_t qxJulianDif(double first, double second);

/** Whole days from the first date to the second. */
QX_API int32_t qxYMDDif(int16_t year1, int16_t month1, int16_t day1, int16_t year2, int16_t month2,
                        int16_t day2);

/** Seconds from the first time of day to the second. */
QX_API int32_t qxHMSDif(int16_t hour1, int16_t minute1, int16_t second1, int16_t hour2,
                        int16_t minute2, int16_t second2);

/** qxDateStrToDate in the order of a layout; an unknown layout reads year, month, day. */
QX_API double qxDateTxtToJulian(const char* text, int16_t layout);

/** qxDateStrValidate in the order of a layout. */
QX_API int32_t qxDateTxtVal(const char* text, int16_t layout);

/** Whole days from the first date text to the second, each with a layout of its own. */
QX_API int32_t qxDateTxtDif(const char* first, const char* second, int16_t layout1,
                            int16_t layout2);

/** qxTimeStrToTime. */
QX_API double qxTimeTxtToJulian(const char* text);

/** Seconds from the first time text to the second. */
QX_API int32_t qxTimeTxtDif(const char* first, const char* second);

/** Writes a date under a layout, zero-terminated, and returns its length. The separator may have
 * any length (null means none) and is part of the picture: letters in it act as in qxFormatDate,
 * whose rule for the size of `output` holds. An unknown layout gives the empty text and 0. */
QX_API int32_t qxJulianToDateTxt(double date, int16_t layout, const char* separator, char* output);

/** Writes a time under a layout, as qxJulianToDateTxt. */
QX_API int32_t qxJulianToTimeTxt(double date, int16_t layout, const char* separator, char* output);

/* ---- Moving averages ---- */

/*
 * Conventions of every indicator. Inputs come first, then outputs, then parameters, and last the
 * start index; pass 0 to begin as early as the inputs allow. An output without storage is allocated
 * at the smallest input capacity; one with storage is cleared over its whole capacity and must not
 * be an input's block. Outputs are sized to the working length L, the smallest size among inputs
 * and outputs. Series functions begin at s, the start index raised to the first valid index of
 * every input. Elements that a function does not write are 0.0, in particular those before the
 * output's first valid index. A first valid index beyond the data is no error: the series was too
 * short. Statuses: QX_SUCCESS; QX_ERR_INVALID_PARM for a missing or empty input and for an output
 * in an input's block, before anything is written; QX_ERR_MALLOC.
 *
 * Moving averages do not check their periods. With a period P below 1 elements that cannot be
 * computed inside the series stay 0.0, divisions by a zero period give infinities or NaNs, and the
 * first valid index is what its formula gives, at least 0. a = 2 / (P + 1) below.
 *
 * In place: qxSimpleMA, qxMovingSum, qxExpMA, qxWellesMA and qxWellesSum accept an output in the
 * input's own block. Nothing is then cleared or resized, and elements before s keep their values.
 */

/** Simple average: out[i] = (in[i-P+1] + ... + in[i]) / P, kept as one running sum from the end of
 * the series backwards. First valid s + P - 1. With fewer than P elements from s on, the last
 * element holds their sum / P. */
QX_API int32_t qxSimpleMA(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Moving sum: the simple average without its division, in every respect. */
QX_API int32_t qxMovingSum(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Linearly weighted average: the newest of the P elements weighs P, the oldest 1; out[i] = sum of
 * k * in[i-P+k] for k = 1..P / (P (P + 1) / 2). First valid s + P - 1. */
QX_API int32_t qxWeightedMA(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Triangular average: the simple average of the simple average, both of (P + 1) / 2 elements when
 * P is odd, of P / 2 and then P / 2 + 1 when it is even. First valid s + P - 1 for P of 1 or more.
 */
QX_API int32_t qxTriangularMA(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Least-squares average: the line fitted to the P elements that end at i (see qxRegressionLine),
 * read one bar ahead of them: out[i] = intercept + (P + 1) slope. First valid s + P - 1. */
QX_API int32_t qxLstSqrMA(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Average weighted by a second series, usually volume: out[i] = sum of in * weights / sum of
 * weights over P elements, by running sums; 0.0 where the weights sum to 0. First valid
 * s + P - 1, s from both inputs. */
QX_API int32_t qxVolAdjustedMA(const qxArray* in, const qxArray* weights, qxArray* out,
                               int32_t period, int32_t start);

/** Exponential average: out[s] = in[s], then out[i] = a in[i] + (1 - a) out[i-1]. The period may be
 * fractional. First valid s: the seed counts. */
QX_API int32_t qxExpMA(const qxArray* in, qxArray* out, double period, int32_t start);

/** One step of an exponential average: previous + 2 / (P + 1) (value - previous). */
QX_API double qxEMA(double previous, double value, double period);

/** The factor of an exponential average of P bars: 2 / (P + 1). */
QX_API double qxPeriodToExp(double period);

/** The period of an exponential factor, the inverse of qxPeriodToExp: (2 - factor) / factor. */
QX_API double qxExpToPeriod(double factor);

/** Double exponential average: 2 e1 - e2, where e1 is the exponential average of the input and e2
 * that of e1, both seeded with in[s]. out[s] holds the seed; first valid s + 1. (Patrick Mulloy,
 * "Smoothing Data with Faster Moving Averages", Stocks & Commodities, 1994.) */
QX_API int32_t qxDEMA(const qxArray* in, qxArray* out, double period, int32_t start);

/** Triple exponential average: 3 e1 - 3 e2 + e3, with e3 the exponential average of e2. out[s]
 * holds the seed; first valid s + 1. (Mulloy, as above.) */
QX_API int32_t qxTEMA(const qxArray* in, qxArray* out, double period, int32_t start);

/** Tim Tillson's T3: `passes` generalised double exponential passes (1 + v) e1 - v e2 one after the
 * other (fewer than 2 mean one). `volumeFactor` v is brought into 0..1; 0 gives repeated
 * exponential averages, 1 repeated qxDEMA. First valid s. ("Smoothing Techniques for More Accurate
 * Signals", Stocks & Commodities, 1998.) */
QX_API int32_t qxT3(const qxArray* in, qxArray* out, double period, double volumeFactor,
                    int32_t passes, int32_t start);

/** Exponential average of the input advanced by its own lag: lag = (P - 1) / 2, at least 1,
 * truncated; out[s+lag-1] = in[s], then out[i] = a (2 in[i] - in[i-lag]) + (1 - a) out[i-1]. First
 * valid s + lag - 1. */
QX_API int32_t qxZeroLagExpMA(const qxArray* in, qxArray* out, double period, int32_t start);

/** Welles Wilder's average: the mean of the first P elements, then out[i] = (out[i-1] (P - 1) +
 * in[i]) / P. First valid s + P - 1. With fewer than P elements from s on, the last element holds
 * their sum / P. (New Concepts in Technical Trading Systems, 1978.) */
QX_API int32_t qxWellesMA(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Wilder's accumulation: the sum of the first P elements, then sum - sum / P + in[i]. First valid
 * s + P - 1; a shorter series leaves its partial sum in the last element. */
QX_API int32_t qxWellesSum(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Chande momentum oscillator, -100..100: 100 (up - down) / (up + down), where up and down are the
 * sums of the rises and falls over the last P changes; 0.0 when there are none. First valid s + P.
 * (Tushar Chande and Stanley Kroll, The New Technical Trader, 1994.) */
QX_API int32_t qxCMO(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Variable index dynamic average: an exponential average whose factor follows momentum,
 * k = 2 / (emaPeriod + 1) |CMO| / 100 and out[i] = k in[i] + (1 - k) out[i-1], with the qxCMO of
 * cmoPeriod bars. The element before the first valid one holds the seed. First valid
 * s + cmoPeriod; a cmoPeriod of 9 warms up 13 bars longer. (Chande and Kroll, as above.) */
QX_API int32_t qxVIDYA(const qxArray* in, qxArray* out, int32_t cmoPeriod, int32_t emaPeriod,
                       int32_t start);

/** qxVIDYA with an oscillator of 9 bars. First valid s + 22. */
QX_API int32_t qxVariableMA(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** The moving average of a method code, QX_MA_EXPONENTIAL .. QX_MA_ZERO_LAG, with its first valid
 * index and status. Any other code: QX_ERR_INVALID_PARM, nothing touched. */
QX_API int32_t qxMovingAverage(const qxArray* in, qxArray* out, int32_t method, int32_t period,
                               int32_t start);

/* ---- Series statistics ---- */

/*
 * Ranges: from and to are inclusive and come in either order. From is raised to the first valid
 * index of each series, to lowered to the last element of the shortest. An empty range reads
 * nothing: minimum, maximum and sum 0.0, average NaN. Degenerate ranges give 0, NaN or infinity as
 * the formulas fall. N is the number of elements in the range.
 */

/** Minimum, maximum, average and sum of a range; any result pointer may be null. With skipZeros
 * elements equal to 0 count as missing for the sum, the average and the minimum, which still starts
 * from the first element; the maximum sees them. */
QX_API int32_t qxArrayStats(const qxArray* array, double* min, double* max, double* avg,
                            double* sum, int32_t from, int32_t to, int32_t skipZeros);

/** Indexes of the minimum and the maximum of a range, the earliest of equal ones; either pointer
 * may be null. With skipZeros the minimum does not move to a zero. */
QX_API int32_t qxArrayStatsPos(const qxArray* array, int32_t* minPos, int32_t* maxPos, int32_t from,
                               int32_t to, int32_t skipZeros);

/** Lowest non-zero and highest of all open, high, low and close prices of a range of bars; either
 * pointer may be null. The low starts from the first non-zero close (0.0 without one), the high
 * from 0.0. */
QX_API int32_t qxBarStats(const qxBars* bars, double* low, double* high, int32_t from, int32_t to);

/** Standard deviation: the root of the mean squared deviation, divided by N, or by N - 1 when
 * `sample` is not 0. */
QX_API double qxStdDev(const qxArray* array, int32_t sample, int32_t from, int32_t to);

/** Standard error of the estimate of the least-squares line over a range: the root of the residual
 * variance with N - 2 degrees of freedom; 0.0 when that is not above 0. */
QX_API double qxStdErr(const qxArray* array, int32_t from, int32_t to);

/** Least-squares line over a range that is not reordered, x running 1..N: the intercept is its
 * value one bar before the range. One element: slope 0 and the element. Empty: NaN for both.
 * Either pointer may be null. */
QX_API int32_t qxRegressionLine(const qxArray* array, double* slope, double* intercept,
                                int32_t from, int32_t to);

/** Correlation of two series: covariance with the divisor N - 1 over the product of the standard
 * deviations, which follow `sample`; 0.0 when that product is 0. With the population flag identical
 * series therefore give N / (N - 1). */
QX_API double qxCorCoef(const qxArray* x, const qxArray* y, int32_t sample, int32_t from,
                        int32_t to);

/** Sample covariance of two series, divided by N - 1. */
QX_API double qxCovariance(const qxArray* x, const qxArray* y, int32_t from, int32_t to);

/** Root of the mean absolute logarithmic change, |ln(a[i] / a[i-1])|, over a range. */
QX_API double qxDispersion(const qxArray* array, int32_t from, int32_t to);

/** Sum of the `count` elements that end at `index`, from there backwards; elements before the first
 * valid index or outside the series are left out. */
QX_API double qxSumPrev(const qxArray* array, int32_t count, int32_t index);

/** Slope between two elements, (a[i2] - a[i1]) / (i2 - i1); 0.0 when one lies outside. */
QX_API double qxSlopeArrayPts(const qxArray* array, int32_t i1, int32_t i2);

/** Slope between two points, (y2 - y1) / (x2 - x1). */
QX_API double qxSlopePts(double x1, double y1, double x2, double y2);

/** First index from the first valid one on whose element is not 0 (a NaN is not); 0 without one. */
QX_API int32_t qxFirstNonZeroItem(const qxArray* array);

/** Index of the most recent high before `to`: the walk goes back while elements fall toward it and
 * then while they rise, equal neighbours stopping it. When it reaches the range's start the result
 * is from if a[from] >= a[to], else to; for an empty range it is from. The range may come in either
 * order and is cut to the valid part of the series. */
QX_API int32_t qxLastHigh(const qxArray* array, int32_t from, int32_t to);

/** Index of the most recent low, the mirror image of qxLastHigh except for the comparison of the
 * ends, which is the same. */
QX_API int32_t qxLastLow(const qxArray* array, int32_t from, int32_t to);

/** (high + low + close) / 3 of one bar; like the other single-bar prices 0.0 outside the bars. */
QX_API double qxTypicalPrice(const qxBars* bars, int32_t index);

/** (high + low + 2 close) / 4 of one bar. */
QX_API double qxWeightedClose(const qxBars* bars, int32_t index);

/** (high + low) / 2 of one bar. */
QX_API double qxMedianPrice(const qxBars* bars, int32_t index);

/** (open + high + low + close) / 4 of one bar; (high + low + close) / 3 when its open is 0. */
QX_API double qxAvgPrice(const qxBars* bars, int32_t index);

/** Wilder's true high: the higher of the high and the previous close; the high of bar 0. */
QX_API double qxTrueHigh(const qxBars* bars, int32_t index);

/** Wilder's true low: the lower of the low and the previous close; the low of bar 0. */
QX_API double qxTrueLow(const qxBars* bars, int32_t index);

/** True high - true low. */
QX_API double qxTrueRange(const qxBars* bars, int32_t index);

/** qxTypicalPrice of every bar from `start`, which is not raised. First valid start. */
QX_API int32_t qxTypicalPrices(const qxBars* bars, qxArray* out, int32_t start);

/** qxWeightedClose of every bar from `start`, which is not raised. First valid start. */
QX_API int32_t qxWeightedCloses(const qxBars* bars, qxArray* out, int32_t start);

/** qxMedianPrice of every bar from `start`, which is not raised. First valid start. */
QX_API int32_t qxMedianPrices(const qxBars* bars, qxArray* out, int32_t start);

/** qxAvgPrice of every bar from `start`, which is not raised. First valid start. */
QX_API int32_t qxAvgPrices(const qxBars* bars, qxArray* out, int32_t start);

/** True range: |high - low| at `start`, which is not raised; then the largest of |high - low|,
 * |high - previous close| and |low - previous close|. First valid start. */
QX_API int32_t qxTR(const qxBars* bars, qxArray* out, int32_t start);

/*
 * Moving forms: out[i] is the statistic over the P elements that end at i, to the last bit; first
 * valid s + P - 1, s from every input. A period below 1: QX_ERR_INVALID_PARM.
 */

/** Moving qxStdDev. */
QX_API int32_t qxStdDevMv(const qxArray* in, qxArray* out, int32_t sample, int32_t period,
                          int32_t start);

/** Moving qxStdErr. */
QX_API int32_t qxStdErrMv(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Moving qxDispersion. */
QX_API int32_t qxDispersionMv(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Moving qxCorCoef. */
QX_API int32_t qxCorCoefMv(const qxArray* x, const qxArray* y, qxArray* out, int32_t sample,
                           int32_t period, int32_t start);

/** Moving qxCovariance. */
QX_API int32_t qxCovarianceMv(const qxArray* x, const qxArray* y, qxArray* out, int32_t period,
                              int32_t start);

/** Moving least-squares line up to bar `end`: slope and intercept (one bar before the window) of
 * the P elements that end at each bar, the sum of the values being rolled from bar to bar. An `end`
 * below s + P: QX_ERR_INVALID_PARM. */
QX_API int32_t qxRegressionLineMv(const qxArray* in, qxArray* slope, qxArray* intercept,
                                  int32_t period, int32_t start, int32_t end);

/** Coefficient of determination of the line over the last P bars, 0..1: the square of the moving
 * correlation with the bar index. */
QX_API int32_t qxRSquared(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/* ---- Momentum oscillators ---- */

/* In the formulas of this section s is the start index raised to the first valid index of every
 * input series, L the number of elements computed (the smallest size among inputs and outputs),
 * and an output element that no formula writes is 0.0. Functions over bars use the start index as
 * it is; only the series functions that they call on one series of the bar set (qxRVIoriginal on
 * the highs, for instance) raise it to that series' first valid index. An output that is an input's
 * block is refused, a first valid index beyond the data is no error, and a period (`period`, or
 * what its argument says) is a number of bars. A window of fewer than 1 bar gives
 * QX_ERR_INVALID_PARM before anything is written; so does a negative lag, which is the period of
 * qxMomentum, qxRateOfChange and qxDPO. The periods of averages, those within qxRMI and
 * qxRVIoriginal included, are not checked: dividing by a period of 0 follows IEEE arithmetic. */

/** Difference of two series: out[i] = a[i] - b[i] from s. First valid s. */
QX_API int32_t qxOscillator(const qxArray* a, const qxArray* b, qxArray* out, int32_t start);

/** Difference in percent of the second series: out[i] = 100 (a[i] - b[i]) / b[i] from s; 0 where
 * a[i] is 0 (b[i] is not tested: a zero there gives an infinity). First valid s. */
QX_API int32_t qxOscillatorPct(const qxArray* a, const qxArray* b, qxArray* out, int32_t start);

/** Quotient of two series: out[i] = a[i] / b[i], 0 where b[i] is 0. Only the first valid index of
 * `a` raises the start index. First valid s. */
QX_API int32_t qxRatio(const qxArray* a, const qxArray* b, qxArray* out, int32_t start);

/** Change over `period` bars: out[i] = in[i] - in[i-period]. First valid s + period. */
QX_API int32_t qxMomentum(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Rate of change over `period` bars: out[i] = (in[i] - in[i-period]) / in[i-period] * scale, 0
 * where in[i-period] is 0; with scale 0 the plain change in[i] - in[i-period]. A scale of 100
 * gives percents. First valid s + period. */
QX_API int32_t qxRateOfChange(const qxArray* in, qxArray* out, double scale, int32_t period,
                              int32_t start);

/** Rate of change of one element, as in qxRateOfChange: from array[index-period] to array[index]. 0
 * when index - period lies before the first valid index, or either index outside the series. */
QX_API double qxROC(const qxArray* array, int32_t index, int32_t period, double scale);

/** Relative momentum index, 0..100: the RSI of changes over `lag` bars. up and down are the
 * averages of the gains and losses in[i] - in[i-lag]: plain over the first `period` of them, then
 * up = (up (period - 1) + gain) / period, likewise down; out[i] = 100 up / (up + down), 0 when the
 * sum is 0. First valid s + lag + period - 1. Where the series ends earlier, the last element
 * holds the value of the changes so far, divided by `period` all the same.
 * Source: Roger Altman, Relative Momentum Index, Technical Analysis of Stocks & Commodities,
 * 1993. */
QX_API int32_t qxRMI(const qxArray* in, qxArray* out, int32_t period, int32_t lag, int32_t start);

/** Relative strength index, 0..100: qxRMI with a lag of one bar. A series that only rises gives
 * 100, a flat one 0. First valid s + period.
 * Source: J. Welles Wilder, New Concepts in Technical Trading Systems, 1978. */
QX_API int32_t qxRSI(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Wilder average of the rises from bar to bar: out[s+period] = sum of the first `period` rises /
 * period, then out[i] = (out[i-1] (period - 1) + rise) / period; a fall counts as a rise of 0.
 * First valid s + period. Where the series ends earlier, the last element holds the mean so far. */
QX_API int32_t qxUpAverage(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** As qxUpAverage, of the falls in[i-1] - in[i] where positive. */
QX_API int32_t qxDownAverage(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Difference of two averages of one series: out = average(period1) - average(period2), both by
 * `method` (QX_MA_...). First valid: the greatest of start + max(period1, period2) - 1 and the two
 * averages' own. An unknown method gives zeros. */
QX_API int32_t qxPriceOscillator(const qxArray* in, qxArray* out, int32_t period1, int32_t period2,
                                 int32_t method, int32_t start);

/** As qxPriceOscillator, in percent of the second average (see qxOscillatorPct). */
QX_API int32_t qxPriceOscillatorPct(const qxArray* in, qxArray* out, int32_t period1,
                                    int32_t period2, int32_t method, int32_t start);

/** Detrended price oscillator: price less a centred simple average. With h = period / 2 + 1 (whole
 * part), out[i-h] = in[i-h] - (sum of the `period` elements that end at i) / period. The last h
 * elements are cut off: the output's size is L - h, and nothing is written when no more than
 * max(period, 2) elements lie between s and L. First valid s + period - h - 1. A period of 1 sums
 * two elements.
 * Source: Steven Achelis, Technical Analysis from A to Z. */
QX_API int32_t qxDPO(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Stochastic of one series, 0..100: out[i] = 100 (in[i] - lowest) / (highest - lowest) over the
 * last `period` elements, 100 when they are equal. First valid s + period - 1. */
QX_API int32_t qxStochastic(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Raw %K, 0..100: out[i] = 100 (close - lowest low) / (highest high - lowest low) over the last
 * `period` bars, 100 when the two are equal. First valid start + period - 1.
 * Source: George Lane, Lane's Stochastics, Technical Analysis of Stocks & Commodities, 1984. */
QX_API int32_t qxRawK(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Fast %D: the exponential average (qxExpMA, period `dPeriod`) of the raw %K of `kPeriod` bars.
 * First valid start + kPeriod - 1. */
QX_API int32_t qxFastD(const qxBars* bars, qxArray* out, int32_t kPeriod, int32_t dPeriod,
                       int32_t start);

/** Slow %D: the exponential average of period `dPeriod2` of qxFastD(kPeriod, dPeriod1). First valid
 * start + kPeriod - 1. */
QX_API int32_t qxSlowD(const qxBars* bars, qxArray* out, int32_t kPeriod, int32_t dPeriod1,
                       int32_t dPeriod2, int32_t start);

/** Stochastic oscillator with its signal line, both smoothed by `method` (QX_MA_...). kOut is 100
 * (close - lowest) / (highest - lowest), 100 when they are equal, with the extremes of qxBarStats
 * over the last `kPeriod` bars (the lowest price other than 0 and the highest price, of all four
 * prices); then it is slowed over `kSlow` bars, and dOut is its average over `dPeriod`. Only the
 * exponential, simple and Welles averages can slow it, since it is done in place; with any other
 * method kOut stays unslowed. First valid: start + kPeriod - 1, raised by each average as it does
 * on its own.
 * Source: George Lane, Lane's Stochastics, Technical Analysis of Stocks & Commodities, 1984. */
QX_API int32_t qxStochasticOscillator(const qxBars* bars, qxArray* kOut, qxArray* dOut,
                                      int32_t method, int32_t kPeriod, int32_t kSlow,
                                      int32_t dPeriod, int32_t start);

/** Stochastic of the relative strength index: qxStochastic(qxRSI(in, period), period) from start +
 * period. First valid s + 2 period - 1.
 * Source: Tushar Chande and Stanley Kroll, The New Technical Trader, 1994. */
QX_API int32_t qxStochRSI(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Williams' %R on a scale of 0 (close at the high) to 100 (at the low), without a minus sign:
 * out[i] = 100 (highest high - close) / (highest high - lowest low) over the last `period` bars, 0
 * when the two are equal. First valid start + period - 1.
 * Source: Larry Williams, How I Made One Million Dollars Last Year Trading Commodities, 1973. */
QX_API int32_t qxWilliamsR(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Stochastic momentum index, -100..100, and its signal line. Over the last `period` bars, rel =
 * close - (highest high + lowest low) / 2 and rng = highest high - lowest low; both are averaged
 * exponentially twice (period1, then period2, seeded with the first value); out[i] = 100 rel /
 * (rng / 2), 0 when the averaged rng is 0. signalOut = qxExpMA(out, signalPeriod). First valid of
 * both start + period - 1.
 * Source: William Blau, Stochastic Momentum, Technical Analysis of Stocks & Commodities, 1993. */
QX_API int32_t qxSMI(const qxBars* bars, qxArray* out, qxArray* signalOut, int32_t period,
                     int32_t period1, int32_t period2, int32_t signalPeriod, int32_t start);

/** Moving average convergence/divergence with its customary factors, which no argument changes
 * (see qxMACDx): fast = 0.15 in[i] + 0.85 fast, slow = 0.075 in[i] + 0.925 slow, both seeded with
 * in[s]; macdOut[i] = fast - slow from s + 1; signalOut = qxExpMA(macdOut, signalPeriod). First
 * valid of both s + 1.
 * Source: Gerald Appel, The Moving Average Convergence-Divergence Method, 1979. */
QX_API int32_t qxMACD(const qxArray* in, qxArray* macdOut, qxArray* signalOut, int32_t signalPeriod,
                      int32_t start);

/** Moving average convergence/divergence with chosen periods and all its parts. fastOut and slowOut
 * are the exponential averages over the smaller and the greater of the two periods, macdOut their
 * difference (first valid of the three s), signalOut the exponential average of macdOut (first
 * valid s + 1). crossOut is 1.0 where macdOut crosses up through signalOut, -1.0 where it crosses
 * down, else 0.0 (qxCrossOverFill; its last element is never tested and stays 0.0); first valid s
 * + 1. */
QX_API int32_t qxMACDx(const qxArray* in, qxArray* fastOut, qxArray* slowOut, qxArray* macdOut,
                       qxArray* signalOut, qxArray* crossOut, int32_t period1, int32_t period2,
                       int32_t signalPeriod, int32_t start);

/** Change in percent of a triple exponential average (three of factor 2 / (period + 1) in turn,
 * seeded with in[s]): out[i] = 100 (e3 - previous e3) / e3, unguarded. First valid s + 1.
 * Source: Jack Hutson, Good TRIX, Technical Analysis of Stocks & Commodities, 1983. */
QX_API int32_t qxTRIX(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** True strength index as a ratio, -1..1: the change from bar to bar, averaged exponentially over
 * period1 and then period2, divided by the absolute change averaged in the same way; 0 when that
 * is 0. First valid s + 1.
 * Source: William Blau, True Strength Index, Technical Analysis of Stocks & Commodities, 1991. */
QX_API int32_t qxTSI(const qxArray* in, qxArray* out, int32_t period1, int32_t period2,
                     int32_t start);

/** Relative volatility index of one series, 0..100: qxRSI with the sample standard deviation of the
 * last ten elements in the place of the size of each move. First valid s + period + 8. Where the
 * series ends earlier, the last element holds the value of the moves so far.
 * Source: Donald Dorsey, The Relative Volatility Index, Technical Analysis of Stocks &
 * Commodities, 1993. */
QX_API int32_t qxRVIoriginal(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Relative volatility index of bars: the mean of qxRVIoriginal of the highs and of the lows. First
 * valid start + period + 8.
 * Source: Donald Dorsey, Refining the Relative Volatility Index, Technical Analysis of Stocks &
 * Commodities, 1995. */
QX_API int32_t qxRVI(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Inertia: the least-squares average (qxLstSqrMA) over `lsqPeriod` bars of the relative volatility
 * index of `rviPeriod` bars. First valid start + rviPeriod + 8 + lsqPeriod - 1.
 * Source: Donald Dorsey, Refining the Relative Volatility Index, Technical Analysis of Stocks &
 * Commodities, 1995. */
QX_API int32_t qxInertia(const qxBars* bars, qxArray* out, int32_t rviPeriod, int32_t lsqPeriod,
                         int32_t start);

/** Commodity channel index: out[i] = (t[i] - mean) / (0.015 mean deviation), with the typical price
 * t, its simple average over the last `period` bars and the mean absolute distance from that; 0
 * when the distances are all 0. First valid start + period - 1.
 * Source: Donald Lambert, Commodity Channel Index, Commodities, 1980. */
QX_API int32_t qxCCI(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Ultimate oscillator, 0..100, usually of 7, 14 and 28 bars. With the true low tl and true high th
 * of each bar after `start` (previous close included), q(P) = sum of (close - tl) / sum of (th -
 * tl) over the last P bars, 0 when the divisor is 0; out[i] = 100 (4 q(period1) + 2 q(period2) +
 * q(period3)) / 7. First valid start + the greatest period.
 * Source: Larry Williams, The Ultimate Oscillator, Technical Analysis of Stocks & Commodities,
 * 1985. */
QX_API int32_t qxUltimateOsc(const qxBars* bars, qxArray* out, int32_t period1, int32_t period2,
                             int32_t period3, int32_t start);

/** Intraday momentum index, 0..100, usually of 14 bars: out[i] = 100 gains / (gains + losses), the
 * sums of close - open over the last `period` bars that rose and of open - close over those that
 * fell; 0 when both are 0. First valid start + period - 1.
 * Source: Tushar Chande and Stanley Kroll, The New Technical Trader, 1994. */
QX_API int32_t qxIMI(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Net momentum oscillator, -100..100, usually of 14 bars: 100 (up - down) / (up + down) with the
 * Wilder averages of rises and falls of qxRSI, 0 when their sum is 0. First valid s + period.
 * Source: Tushar Chande and Stanley Kroll, Technical Analysis of Stocks & Commodities, 1993. */
QX_API int32_t qxNMO(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Qstick, usually of 8 bars: the simple average of close - open. First valid start + period - 1.
 * Source: Tushar Chande and Stanley Kroll, The New Technical Trader, 1994. */
QX_API int32_t qxQstick(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Line oscillator: distance of each element from the least-squares line through the last `period`
 * elements, taken at the element itself (qxLstSqrMA lies one bar beyond). First valid s + period -
 * 1. This library's own definition. */
QX_API int32_t qxLineOsc(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Forecast oscillator (%F), usually of 5 bars: out[i] = 100 (in[i] - F) / in[i] with the forecast
 * F = qxLstSqrMA(in, period) at i - 1, the line through the `period` elements before i extended to
 * i; 0 where in[i] is 0. First valid s + period.
 * Source: Tushar Chande and Stanley Kroll, The New Technical Trader, 1994. */
QX_API int32_t qxForecastOscillator(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/* ---- Trend and directional indicators ---- */

/*
 * The functions over bars use the start index as given, not raised to the first valid indexes of
 * their inputs. A period below 0 (a lookback, not a smoothing period): QX_ERR_INVALID_PARM; over a
 * period of 0 the directional indicators and the Aroon lines divide by zero as IEEE does.
 * Directional movement and the parabolic stop are Welles Wilder's (New Concepts in Technical
 * Trading Systems, 1978).
 */

/** Raw directional movement: the larger of high[i] - high[i-1] and low[i-1] - low[i] counts for its
 * own side, the other is 0; both are 0 when both are negative or they are equal. First valid of
 * both start + 1. */
QX_API int32_t qxDMIx(const qxBars* bars, qxArray* plusDM, qxArray* minusDM, int32_t start);

/** Directional indicators: 100 times the qxWellesSum of each side's movement over that of the true
 * range; 0.0 where the range sum is 0. The range is summed from start, the movement from start + 1.
 * First valid of both start + P. */
QX_API int32_t qxDI(const qxBars* bars, qxArray* plusDI, qxArray* minusDI, int32_t period,
                    int32_t start);

/** Directional index: 100 |+DI - -DI| / (+DI + -DI), 0.0 where they are equal. First valid
 * start + P. */
QX_API int32_t qxDX(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Average directional index: the qxWellesMA of qxDX over smoothPeriod bars. First valid
 * start + P + smoothPeriod - 1. Only the preparation's status is reported. */
QX_API int32_t qxADX(const qxBars* bars, qxArray* out, int32_t period, int32_t smoothPeriod,
                     int32_t start);

/** Average directional index rating: (ADX[i] + ADX[i-lag]) / 2, elements outside the series being
 * 0. First valid start + P + smoothPeriod + lag - 1. */
QX_API int32_t qxADXR(const qxBars* bars, qxArray* out, int32_t period, int32_t smoothPeriod,
                      int32_t lag, int32_t start);

/** Aroon lines over the P + 1 bars that end at i: 100 (P - bars since the highest high) / P and the
 * same for the lowest low, the earliest of equal extremes counting. First valid of both start + P.
 * (Tushar Chande, "A Time Price Oscillator", Stocks & Commodities, 1995.) */
QX_API int32_t qxAroon(const qxBars* bars, qxArray* up, qxArray* down, int32_t period,
                       int32_t start);

/** Aroon up - Aroon down. First valid start + P. */
QX_API int32_t qxAroonOscillator(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Dynamic momentum index: 100 up / (up + down) over the last n changes, 0.0 when they sum to 0.
 * n = floor(14 / (5-bar sample deviation / its 10-bar mean)), held to 3..30, and 3 where one of the
 * two is 0. First valid s + 30. (Chande and Kroll, The New Technical Trader, 1994.) */
QX_API int32_t qxDMI(const qxArray* in, qxArray* out, int32_t start);

/** Parabolic stop and reverse. `accel` is both the first acceleration factor and its step, and
 * `maxAccel` its limit (usual 0.02 and 0.2). A close at or beyond the stop reverses. sarOut holds
 * the stop, posOut 1.0 for long and -1.0 for short. The position starts long when the second close
 * is above the first. First valid of both start + 2; fewer than two bars leave the outputs clear.
 */
QX_API int32_t qxSAR(const qxBars* bars, qxArray* sarOut, qxArray* posOut, double accel,
                     double maxAccel, int32_t start);

/** Vertical horizontal filter: (highest - lowest of the last P values) / sum of the last P absolute
 * changes; 0.0 when that sum is 0. First valid s + P. (Adam White, Futures, August 1991.) */
QX_API int32_t qxVHF(const qxArray* in, qxArray* out, int32_t period, int32_t start);

/** Random walk index, P at least 2: for n = 2..P the mean true range of the n bars before i gives a
 * random walk of mean * sqrt(n); hiOut is the largest (high[i] - low[i-n+1]) / walk, loOut the
 * largest (high[i-n+1] - low[i]) / walk. Terms without range are skipped; 0.0 when all are. First
 * valid of both start + P. (E. Michael Poulos, Stocks & Commodities, 1991 and 1992.) */
QX_API int32_t qxRWI(const qxBars* bars, qxArray* hiOut, qxArray* loOut, int32_t period,
                     int32_t start);

/** Zigzag: straight lines between the turning points that a move of at least `percent` (5.0 for
 * 5 %) confirms, from s through the last extreme to the last element. It looks ahead: values near
 * the end change as bars arrive. A percent that is not above 0: QX_ERR_INVALID_PARM. First valid s.
 * (Arthur Merrill, Filtered Waves; start, ties and last leg are this library's own.) */
QX_API int32_t qxZigZag(const qxArray* in, qxArray* out, double percent, int32_t start);

/** Ichimoku lines, usual periods 9, 26 and 52. With mid(P) = (highest high + lowest low of P
 * bars) / 2: tenkan = mid(P1), kijun = mid(P2); spanA[i+P2] = (tenkan[i] + kijun[i]) / 2 and
 * spanB[i+P2] = mid(P3) at i, dropped where they fall beyond the data; chikou[i] = close[i+P2],
 * which is P2 elements shorter. First valid start + P1 - 1, start + P2 - 1, start + max(P1, P2) - 1
 * + P2, start + P3 - 1 + P2 and start. (Goichi Hosoda, 1969.) */
QX_API int32_t qxIchimokuKinkoHyo(const qxBars* bars, qxArray* tenkan, qxArray* kijun,
                                  qxArray* spanA, qxArray* spanB, qxArray* chikou, int32_t period1,
                                  int32_t period2, int32_t period3, int32_t start);

/** Trend score: for each lag from..to +1 when in[i] >= in[i-lag], else -1, added up (usual 11 and
 * 20). Lags below 1 or out of order: QX_ERR_INVALID_PARM. First valid s + to. (Tushar Chande,
 * "Rating Trend Strength", Stocks & Commodities, September 1993.) */
QX_API int32_t qxTrendScore(const qxArray* in, qxArray* out, int32_t from, int32_t to,
                            int32_t start);

/** Polarized fractal efficiency: 100 sqrt(d^2 + P^2) / sum over the last P changes of
 * sqrt(change^2 + 1), with the sign of d = in[i] - in[i-P] (0 for none); then, with a smoothPeriod
 * above 1, the qxExpMA of it. The value depends on the price unit. First valid s + P. (Hans
 * Hannula, Stocks & Commodities, January 1994.) */
QX_API int32_t qxPFE(const qxArray* in, qxArray* out, int32_t period, int32_t smoothPeriod,
                     int32_t start);

/** Range indicator: v = true range / (close - previous close) on a rise, else the true range; its
 * place between the extremes of the last P values in percent (0 when they are equal), smoothed by
 * the qxExpMA of smoothPeriod. First valid start + P. (Jack L. Weinberg, "The Range Indicator",
 * Stocks & Commodities, June 1995.) */
QX_API int32_t qxRangeIndicator(const qxBars* bars, qxArray* out, int32_t period,
                                int32_t smoothPeriod, int32_t start);

/* ---- Volatility, bands and channels ---- */

/* Start index, warm-up and refusals are those of the momentum oscillators: functions over bars use
 * the start index as it is, those over series raise it to s. */

/** Average true range: qxWellesMA over `period` bars of the true ranges from `start` on. First
 * valid start + period - 1.
 * Source: J. Welles Wilder, New Concepts in Technical Trading Systems, 1978. */
QX_API int32_t qxATR(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Bollinger bands on the typical price: middle is its simple average over `period` bars, upper and
 * lower lie `k` sample standard deviations (divisor period - 1) away. First valid of the three
 * start + period - 1. Where the series is shorter, middle keeps the partial average at its last
 * element.
 * Source: John Bollinger, Bollinger on Bollinger Bands, 2001. */
QX_API int32_t qxBollinger(const qxBars* bars, qxArray* upper, qxArray* middle, qxArray* lower,
                           double k, int32_t period, int32_t start);

/** Distance of the Bollinger bands: out[i] = 2 k standard deviations. First valid start + period -
 * 1. */
QX_API int32_t qxBollingerWidth(const qxBars* bars, qxArray* out, double k, int32_t period,
                                int32_t start);

/** Envelope of a series: upper[i] = in[i] + width[i] * factor, lower[i] = in[i] - width[i] *
 * factor. First valid s. */
QX_API int32_t qxEnvelope(const qxArray* in, const qxArray* width, qxArray* upper, qxArray* lower,
                          double factor, int32_t start);

/** Proportional envelope: upper[i] = in[i] + in[i] * pct, lower[i] = in[i] - in[i] * pct, where
 * `pct` is a fraction (0.05 for 5 %). First valid s. */
QX_API int32_t qxEnvelopePct(const qxArray* in, qxArray* upper, qxArray* lower, double pct,
                             int32_t start);

/** qxEnvelopePct around a moving average of `in` (`method` is QX_MA_...). First valid that of the
 * average. A status of the average is returned, with both bands cleared. */
QX_API int32_t qxMAEnvelope(const qxArray* in, qxArray* upper, qxArray* lower, double pct,
                            int32_t method, int32_t period, int32_t start);

/** Moving averages of the highs and of the lows (`method` is QX_MA_...), with their own first valid
 * indexes. The first failure of an average is returned. */
QX_API int32_t qxMAHighLow(const qxBars* bars, qxArray* hiOut, qxArray* loOut, int32_t method,
                           int32_t period, int32_t start);

/** Standard error bands: middle is qxLstSqrMA(in, period), and upper and lower lie `k` standard
 * errors of the line (qxStdErr over the last `period` elements) away. The middle begins as early
 * as `in` allows, the bands at s + period - 1, which is the first valid index of the three.
 * Source: Jon Andersen, Standard Error Bands, Technical Analysis of Stocks & Commodities, 1996. */
QX_API int32_t qxStdErrBands(const qxArray* in, qxArray* upper, qxArray* middle, qxArray* lower,
                             double k, int32_t period, int32_t start);

/** Price channels: the highest and the lowest price of the `period` bars before bar i, which is not
 * among them (qxBarStats: all four prices, zeros ignored in the lowest). First valid start +
 * period.
 * Source: Richard Donchian's four-week rule. */
QX_API int32_t qxPriceChannels(const qxBars* bars, qxArray* upper, qxArray* lower, int32_t period,
                               int32_t start);

/** Projection bands: the highest of the last `period` highs, each carried forward to bar i along
 * the slope of the least-squares line through those highs, and the lowest of the lows likewise.
 * First valid of both start + 2 period - 2.
 * Source: Mel Widner, Signaling Change with Projection Bands, Technical Analysis of Stocks &
 * Commodities, 1995. */
QX_API int32_t qxProjectionBands(const qxBars* bars, qxArray* upper, qxArray* lower, int32_t period,
                                 int32_t start);

/** Projection bandwidth: 200 (upper - lower) / (upper + lower) of the projection bands, unguarded.
 * First valid start + 2 period - 2. */
QX_API int32_t qxProjectionBandwidth(const qxBars* bars, qxArray* out, int32_t period,
                                     int32_t start);

/** Projection oscillator: 100 (close - lower) / (upper - lower) of the projection bands, 0 when
 * they meet; smoothed by qxExpMA when `smoothPeriod` is above 1. First valid start + 2 period -
 * 2. */
QX_API int32_t qxProjectionOscillator(const qxBars* bars, qxArray* out, int32_t period,
                                      int32_t smoothPeriod, int32_t start);

/** Chaikin's volatility: the change in percent over `period` bars of an exponential average of high
 * - low with the same period, seeded at `start`; 0 where the earlier average is 0. First valid
 * start + period.
 * Source: Steven Achelis, Technical Analysis from A to Z. */
QX_API int32_t qxChaikinVolatility(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Mass index: the sum over `period` bars, from start + 1 on, of e1 / e2 (0 when e2 is 0), where e1
 * = 0.2 (high - low) + 0.8 e1 and e2 = 0.2 e1 + 0.8 e2 are seeded with high - low at `start`. Bars
 * of one range give `period`. First valid start + period.
 * Source: Donald Dorsey, The Mass Index, Technical Analysis of Stocks & Commodities, 1992. */
QX_API int32_t qxMassIndex(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Wilder's volatility system, a stop that reverses the position. arcOut = qxATR(period) * k (first
 * valid start + period - 1). sicOut is the significant close: the best close since the last
 * reversal, beginning with the close of bar i0 = start + period - 2 (not below 0; its first valid
 * index). sarOut[i] = sicOut[i-1] -/+ arcOut[i-1] is the stop of a long or short position; a close
 * beyond it reverses. posOut is a signal, not a state: +1 on bars that reverse to long, -1 on bars
 * that reverse to short, 0 elsewhere. The system begins short; sarOut and posOut are valid from i0
 * + 1.
 * Source: J. Welles Wilder, New Concepts in Technical Trading Systems, 1978. */
QX_API int32_t qxWellesVolatility(const qxBars* bars, qxArray* sicOut, qxArray* arcOut,
                                  qxArray* sarOut, qxArray* posOut, double k, int32_t period,
                                  int32_t start);

/* ---- Volume and money flow ---- */

/*
 * Bar-set functions of this family begin at the caller's `start` unchanged: no first valid index of
 * the input raises it, save that of the volume series in qxPVO and in the sum of the volumes of
 * qxChaikinMoneyFlow. h, l, c, v and o below are high, low, close, volume and open interest of bar
 * i, a prime marks the bar before. A bar is up when c > c' and down when c' > c. Elements before
 * the first one computed are 0.0. Divisions without a stated guard follow IEEE arithmetic.
 */

/** On-balance volume: out[i] = out[i-1] + v on an up bar, - v on a down bar, unchanged otherwise,
 * from 0 at `start`. First valid index start + 1.
 * Source: Joseph Granville, New Key to Stock Market Profits. */
QX_API int32_t qxOBV(const qxBars* bars, qxArray* out, int32_t start);

/** On-balance volume over a range: the sum of + v on up bars and - v on down bars of the bars
 * from + 1 to `to`, limited to the bars. from and to are not swapped; a negative `from` counts as
 * 0. */
QX_API double qxOBVol(const qxBars* bars, int32_t from, int32_t to);

/** Moving on-balance volume: out[i] = qxOBVol(bars, i - period, i), the last `period` changes.
 * First valid index start + period. A period of 0 gives zeros, a negative one
 * QX_ERR_INVALID_PARM. */
QX_API int32_t qxOBVolMv(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** On-balance open interest over a range: the open interest of bar `from`, plus o on up bars and
 * minus o on down bars of the bars from + 1 to `to`, limited to the bars. from and to are not
 * swapped; a negative `from` counts as 0. */
QX_API double qxOBOi(const qxBars* bars, int32_t from, int32_t to);

/** Moving on-balance open interest: out[i] = qxOBOi(bars, i - period + 1, i), the open interest of
 * the window's first bar and the period - 1 changes after it, one change fewer than qxOBVolMv.
 * First valid index start + period - 1. A period below 1 gives QX_ERR_INVALID_PARM. */
QX_API int32_t qxOBOiMv(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Smoothed on-balance volume: the exponential average of qxOBV with `period`, seeded at start + 1,
 * the first valid index. A period below 1 gives QX_ERR_INVALID_PARM. This library's own
 * definition. */
QX_API int32_t qxOBVolExp(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Accumulation/distribution line: out[i] = out[i-1] + clv v, out[start] = clv v, with the close
 * location value clv = ((c - l) - (h - c)) / (h - l). Where h = l, clv is +1 when c >= c' and on
 * the start bar, -1 otherwise. First valid index start.
 * Source: Marc Chaikin; Steven Achelis, Technical Analysis from A to Z. */
QX_API int32_t qxAccumDist(const qxBars* bars, qxArray* out, int32_t start);

/** Running sum of a series: out[s] = in[s], out[i] = out[i-1] + in[i], where s is `start` raised to
 * the input's first valid index. First valid index s. */
QX_API int32_t qxAccumulate(const qxArray* in, qxArray* out, int32_t start);

/** Chaikin money flow: (sum of clv v) / (sum of v) over the last `period` bars, clv as in
 * qxAccumDist; 0 when the volumes sum to 0. First valid index start + period - 1. A period below 1
 * gives QX_ERR_INVALID_PARM.
 * Source: Marc Chaikin; Achelis. */
QX_API int32_t qxChaikinMoneyFlow(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Chaikin oscillator: the exponential average of the accumulation/distribution line with period1
 * less the one with period2 (usual 3 and 10), both seeded at `start`. First valid index start.
 * Source: Marc Chaikin; Achelis. */
QX_API int32_t qxChaikinOscillator(const qxBars* bars, qxArray* out, int32_t period1,
                                   int32_t period2, int32_t start);

/** Negative volume index: out[i] = out[i-1] + (c - c') / c' when volume fell (v' > v), unchanged
 * otherwise. Additive, from 0 at `start`. First valid index start + 1.
 * Source: Paul Dysart; Norman Fosback, Stock Market Logic. */
QX_API int32_t qxNVI(const qxBars* bars, qxArray* out, int32_t start);

/** Positive volume index: as qxNVI, changing when volume rose (v > v'). */
QX_API int32_t qxPVI(const qxBars* bars, qxArray* out, int32_t start);

/** Price and volume trend: out[i] = out[i-1] + v (c - c') / c', from 0 at `start`. First valid
 * index start + 1.
 * Source: Achelis. */
QX_API int32_t qxPVT(const qxBars* bars, qxArray* out, int32_t start);

/** Percentage volume oscillator: qxPriceOscillatorPct of the volume series, two averages of one
 * QX_MA_... method. First valid index start + max(period1, period2) - 1. An unknown method gives
 * zeros and QX_SUCCESS.
 * Source: Achelis (volume oscillator). */
QX_API int32_t qxPVO(const qxBars* bars, qxArray* out, int32_t period1, int32_t period2,
                     int32_t method, int32_t start);

/** Price and volume rank: 1 when close and volume both rose or held, 2 when the close rose or held
 * and volume fell, 3 when both fell, 4 when the close fell and volume rose or held. First valid
 * index start + 1.
 * Source: Anthony Macek, Technical Analysis of Stocks & Commodities, June 1994. */
QX_API int32_t qxPVrank(const qxBars* bars, qxArray* out, int32_t start);

/** Ease of movement: out[i] = ((h + l) / 2 - (h' + l') / 2) / ((v / volDivisor) / (h - l)); 0 when
 * v <= 0 or h = l. First valid index start + 1.
 * Source: Richard Arms, Volume Cycles in the Stock Market. */
QX_API int32_t qxArmsEMV(const qxBars* bars, qxArray* out, int32_t volDivisor, int32_t start);

/** Market facilitation index: out[i] = a (h - l) / v, 0 when v = 0, where a is the average of the
 * non-zero volumes from `start` to the last bar. The scale so looks ahead: it changes as bars are
 * appended. First valid index start. The money flow index is qxMoneyFlowIndex.
 * Source: Bill Williams, Trading Chaos (range per volume); the scale is this library's own. */
QX_API int32_t qxMFI(const qxBars* bars, qxArray* out, int32_t start);

/** Money flow index: with t = (h + l + c) / 3, 100 p / (p + n) over the last `period` bars, where p
 * sums t v of the bars with t > t' and n those with t < t'; 0 when p + n = 0. First valid index
 * start + period. A period below 1 (usual 14) gives QX_ERR_INVALID_PARM.
 * Source: Gene Quong and Avrum Soudack, Technical Analysis of Stocks & Commodities, March 1989. */
QX_API int32_t qxMoneyFlowIndex(const qxBars* bars, qxArray* out, int32_t period, int32_t start);

/** Klinger oscillator and its signal line. For each bar after `start`: trend T = +1 when h + l + c
 * exceeds that of the bar before, else -1; dm = h - l; cm = cm + dm while T holds, and
 * (h' - l') + dm at the first bar and whenever T changes; volume force
 * vf = v |2 dm / cm - 1| T 100, 0 when cm = 0. koOut = EMA(vf, period1) - EMA(vf, period2) and
 * signalOut = EMA(koOut, signalPeriod) (usual 34, 55, 13), all seeded at start + 1, the first
 * valid index of both. A period below 1 gives QX_ERR_INVALID_PARM.
 * Source: Stephen Klinger, Technical Analysis of Stocks & Commodities, December 1997. */
QX_API int32_t qxKO(const qxBars* bars, qxArray* koOut, qxArray* signalOut, int32_t period1,
                    int32_t period2, int32_t signalPeriod, int32_t start);

/** Williams accumulation/distribution, without volume: c > c' adds c - min(l, c'), c < c' adds
 * c - max(h, c'); cumulative from 0 at `start`. First valid index start + 1.
 * Source: Larry Williams; Achelis. */
QX_API int32_t qxWilliamsAD(const qxBars* bars, qxArray* out, int32_t start);

/** Herrick payoff index. With m = (h + l) / 2, x = |o - o'|, g = min(o, o') and t = 2x / g (0 when
 * g = 0): k = centValue v (m - m') (1 + t), or (1 - t) unless m > m';
 * out[i] = out[i-1] + (k / 100000 - out[i-1]) factor / 100, from 0 at `start`. First valid index
 * start + 1.
 *
 * centValue is the value of a one-cent move (usual 100), factor the smoothing factor in percent
 * (usual 10).
 * Source: John Herrick; Achelis. */
QX_API int32_t qxHerrickPayoffIndex(const qxBars* bars, qxArray* out, double centValue,
                                    double factor, int32_t start);

/** Demand index, -100 to 100. With w = h + l + 2c and the two-bar range r = max(h, h') - min(l, l')
 * (h - l at `start`), smoothed as ar = EMA(r, period) and av = EMA(v, period) from `start`:
 * u = v / av (0 when av = 0) and f = exp(0.375 (w + w') / ar |w - w'| / min(w, w')), 1 when ar = 0,
 * when w = w' or when the smaller w is not positive. Buying and selling pressure are u and u / f on
 * a rise of w, u / f and u on a fall, u and u otherwise. B and S being their exponential averages
 * with smoothPeriod from start + 1: out[i] = 100 (1 - S / B) when B > S, 100 (B / S - 1) when
 * S > B, else 0. First valid index start + 1. A period below 1 (usual 19 and 19) gives
 * QX_ERR_INVALID_PARM.
 * Source: James Sibbet's idea in its later programmed form (Thomas Aspray, Technical Analysis of
 * Stocks & Commodities); the details never published are this library's own definition. */
QX_API int32_t qxDemandIdx(const qxBars* bars, qxArray* out, int32_t period, int32_t smoothPeriod,
                           int32_t start);

/** Swing index. With p' the open of the bar before and p that of the bar, a = |h - c'|,
 * b = |l - c'|, d = |h - l|, e = |c' - p'| and k = max(a, b): r = a - b/2 + e/4 when a is the
 * largest of a, b and d, else b - a/2 + e/4 when b is, else d + e/4;
 * out[i] = 50 ((c - c') + (c - p) / 2 + (c' - p') / 4) / r k / limit, 0 when r = 0 or limit = 0.
 * First valid index start + 1. Bars without an open give meaningless values.
 *
 * limit is the daily limit move; for a market without one, a large value.
 * Source: J. Welles Wilder, New Concepts in Technical Trading Systems, section VIII. */
QX_API int32_t qxSwingIndex(const qxBars* bars, qxArray* out, double limit, int32_t start);

/** Accumulated swing index: the running sum of qxSwingIndex, 0 at `start`. First valid index
 * start + 1.
 * Source: Wilder, New Concepts in Technical Trading Systems, section VIII. */
QX_API int32_t qxAccumSwingIndex(const qxBars* bars, qxArray* out, double limit, int32_t start);

/** Chicago floor traders' pivot points, the levels for each bar from the bar before it:
 * pivot = (h' + l' + c') / 3, r1 = 2 pivot - l', r2 = pivot + (h' - l'), s1 = 2 pivot - h',
 * s2 = pivot - (h' - l'). First valid index of the five outputs start + 1.
 * Source: floor-trader practice, as data vendors document it. */
QX_API int32_t qxCFTPP(const qxBars* bars, qxArray* pivot, qxArray* r1, qxArray* r2, qxArray* s1,
                       qxArray* s2, int32_t start);

/* ---- Market breadth ---- */

/*
 * Inputs are daily series of a whole market: the numbers of advancing, declining and unchanged
 * issues, and the volumes of the advancing and the declining issues; a, d, u, av and dv below are
 * their elements at i. s is `start` raised to the first valid index of every input. Elements that
 * are not computed, among them those with a divisor of 0, are 0.0. No period is validated.
 */

/** Advancing less declining issues: a - d. First valid index s. */
QX_API int32_t qxADIssues(const qxArray* advances, const qxArray* declines, qxArray* out,
                          int32_t start);

/** Up less down volume: av - dv. First valid index s. */
QX_API int32_t qxUpDownVolume(const qxArray* upVolume, const qxArray* downVolume, qxArray* out,
                              int32_t start);

/** Absolute breadth index: |a - d|. First valid index s.
 * Source: Norman Fosback, Stock Market Logic. */
QX_API int32_t qxABI(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t start);

/** Advance/decline ratio: a / d, 0 when d = 0. First valid index s. */
QX_API int32_t qxADRatio(const qxArray* advances, const qxArray* declines, qxArray* out,
                         int32_t start);

/** Up/down volume ratio: av / dv, 0 when dv = 0. First valid index s. */
QX_API int32_t qxUpDownRatio(const qxArray* upVolume, const qxArray* downVolume, qxArray* out,
                             int32_t start);

/** Share of advancing issues: a / (a + d), 0 when a + d = 0. First valid index s. */
QX_API int32_t qxADLineBreadth(const qxArray* advances, const qxArray* declines, qxArray* out,
                               int32_t start);

/** Trading index: (a / d) / (av / dv), 0 when any of the four is 0. First valid index s.
 * Source: Richard Arms, The Arms Index. */
QX_API int32_t qxTRIN(const qxArray* advances, const qxArray* declines, const qxArray* upVolume,
                      const qxArray* downVolume, qxArray* out, int32_t start);

/** qxTRIN from s to `end`, included and limited to the series, and 0 after it. First valid index
 * s. An `end` before s writes nothing. */
QX_API int32_t qxArmsIdx(const qxArray* advances, const qxArray* declines, const qxArray* upVolume,
                         const qxArray* downVolume, qxArray* out, int32_t start, int32_t end);

/** Advance/decline line: the running sum of a - d from s. First valid index s + 1, although element
 * s holds the first sum (compare qxCVI).
 * Source: Steven Achelis, Technical Analysis from A to Z. */
QX_API int32_t qxADLine(const qxArray* advances, const qxArray* declines, qxArray* out,
                        int32_t start);

/** Cumulative index of two series, usually up and down volume: the running sum of their difference
 * from s. First valid index s.
 * Source: Achelis (cumulative volume index). */
QX_API int32_t qxCVI(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t start);

/** Bolton-Tremblay index: with q = a / u - d / u, out[i] = out[i-1] + sqrt(|q|) when q >= 0 and
 * - sqrt(|q|) when q < 0, unchanged when u = 0; from 0 at s. First valid index s + 1.
 * Source: Hamilton Bolton; Robert Colby, The Encyclopedia of Technical Market Indicators. */
QX_API int32_t qxBoltonTremblay(const qxArray* advances, const qxArray* declines,
                                const qxArray* unchanged, qxArray* out, int32_t start);

/** Overbought/oversold oscillator: the exponential average of a - d with period 10. First valid
 * index s.
 * Source: Achelis. */
QX_API int32_t qxOverBoughtSold(const qxArray* advances, const qxArray* declines, qxArray* out,
                                int32_t start);

/** STIX: the exponential average of 100 a / (a + d), with 0 where a + d = 0, and `period` (usual
 * 21). First valid index s.
 * Source: The Polymetric Report; Achelis. */
QX_API int32_t qxSTIX(const qxArray* advances, const qxArray* declines, qxArray* out,
                      int32_t period, int32_t start);

/** Breadth thrust: the simple average of a / (a + d), with 0 where a + d = 0, over 10 elements.
 * First valid index s + 9. With fewer than 10 elements from s on, the last one holds their sum
 * divided by 10.
 * Source: Martin Zweig; Achelis. */
QX_API int32_t qxBreadthThrust(const qxArray* advances, const qxArray* declines, qxArray* out,
                               int32_t start);

/** Open trading index over 10 elements: (sum a / sum d) / (sum av / sum dv). It is skipped only
 * where the sums of d, av and dv are all three 0; a single sum of 0 gives an infinity or a NaN.
 * First valid index s + 9. With fewer than 10 elements from s on, the last one holds the index of
 * those.
 * Source: Achelis (open-10 TRIN). */
QX_API int32_t qxOpen10TRIN(const qxArray* advances, const qxArray* declines,
                            const qxArray* upVolume, const qxArray* downVolume, qxArray* out,
                            int32_t start);

/** The values, the first valid index and the status of qxTRIN: the five-element sum that the name
 * promises is not taken, and callers rely on it. */
QX_API int32_t qxBretzTRIN5(const qxArray* advances, const qxArray* declines,
                            const qxArray* upVolume, const qxArray* downVolume, qxArray* out,
                            int32_t start);

/** McClellan oscillator: the exponential average of a - d with period1 less the one with period2
 * (usual 19 and 39), both seeded at s. First valid index s.
 * Source: Sherman and Marian McClellan, Patterns for Profit. */
QX_API int32_t qxMcClellanOscillator(const qxArray* advances, const qxArray* declines, qxArray* out,
                                     int32_t period1, int32_t period2, int32_t start);

/** McClellan summation index: the running sum of qxMcClellanOscillator. First valid index s.
 * Source: McClellan, Patterns for Profit. */
QX_API int32_t qxMcClellanSummation(const qxArray* advances, const qxArray* declines, qxArray* out,
                                    int32_t period1, int32_t period2, int32_t start);

/** McClellan oscillator and summation index in one pass. First valid index s of the oscillator,
 * s + 1 of the sum, although its element s holds the first value. */
QX_API int32_t qxMcClellanOscSum(const qxArray* advances, const qxArray* declines, qxArray* oscOut,
                                 qxArray* sumOut, int32_t period1, int32_t period2, int32_t start);

/* ---- Relative performance and projections ---- */

/*
 * Two-market functions align the bars of set `a` with those of set `b` by their dates, which must
 * ascend. The walk begins at a's first bar i dated at or after startDate and after b's first date;
 * i is the output's first valid index. QX_ERR_RECORD_NOT_FOUND when there is no such bar or b has
 * no bar of that date, with the output cleared; QX_ERR_INVALID_PARM when b is unallocated or the
 * output holds one of its price or volume series. A later bar of a is matched when b has a bar of
 * its date. Elements after the end of b stay 0.0. The output runs over a's bars.
 */

/** Comparative performance: (closeA / closeB - base) / base + 1 on matched bars, where base is
 * closeA / closeB on the first common date, so 1.0 there; -1.0 marks a date missing in b. */
QX_API int32_t qxCompPerformance(const qxBars* a, const qxBars* b, qxArray* out, double startDate);

/** Comparative strength: closeA / closeB on matched bars, the value of the bar before on a date
 * missing in b. */
QX_API int32_t qxCompStrength(const qxBars* a, const qxBars* b, qxArray* out, double startDate);

/** Spread of two markets: closeA - closeB on matched bars, the value of the bar before on a date
 * missing in b. This library's own definition. */
QX_API int32_t qxSpread(const qxBars* a, const qxBars* b, qxArray* out, double startDate);

/** Rate of change of the comparative strength: (r[i] - r[i-period]) / r[i-period] with r of
 * qxCompStrength, as qxRateOfChange with scale 1.0 computes it: 0 where r[i-period] is 0, -1 where
 * r has ended with b. First valid index i + period, i being the first common bar. A negative period
 * gives QX_ERR_INVALID_PARM. */
QX_API int32_t qxRSIC(const qxBars* a, const qxBars* b, qxArray* out, int32_t period,
                      double startDate);

/** Percentage performance: 100 (in[i] - in[s]) / in[s], where s is `start` raised to the input's
 * first valid index. First valid index s.
 * Source: Steven Achelis, Technical Analysis from A to Z. */
QX_API int32_t qxPerformancePct(const qxArray* in, qxArray* out, int32_t start);

/** The input less the straight line fitted to the elements s to `end` (limited to the series):
 * out[s + k] = in[s + k] - (slope k + intercept) for k = 0 .. end - s, where s is `start` raised to
 * the input's first valid index. The fit counts its elements from 1, so the line that is subtracted
 * lags it by one element. Elements after `end` are 0.0; an `end` before s writes nothing. First
 * valid index s. */
QX_API int32_t qxDeTrend(const qxArray* in, qxArray* out, int32_t start, int32_t end);

/** Commodity selection index: k adxr[i] atr[i] with k = 100 moveValue / sqrt(margin) /
 * (150 + commission), adxr = qxADXR with `period` as period, smoothing and lag, and atr = qxATR
 * (usual period 14). First valid index start + 3 period - 1, `start` as the caller gives it.
 *
 * moveValue is the money value of a move by one, margin the margin requirement and commission the
 * commission, both in money. QX_ERR_INVALID_PARM when period is below 1, margin not above 0 or
 * 150 + commission = 0.
 * Source: J. Welles Wilder, New Concepts in Technical Trading Systems. */
QX_API int32_t qxCSIndex(const qxBars* bars, qxArray* out, int32_t period, double moveValue,
                         double margin, double commission, int32_t start);

/** Sine of the phase of the cycle of `period` elements, and the sine 45 degrees ahead. With re and
 * im the sums of cos(2 pi k / period) in[i-k] and sin(2 pi k / period) in[i-k] over
 * k = 0 .. period - 1: the phase is atan(im / re) when |re| > 0.001, else pi / 2 with the sign of
 * im (0 when im = 0); pi is added when re < 0, then pi / 2; the result is brought into 0 .. 2 pi.
 * sineOut = sin(phase), leadOut = sin(phase + pi / 4). First valid index of both s + period - 1,
 * where s is `start` raised to the input's first valid index. A period below 1 (usual 15 or 25)
 * gives QX_ERR_INVALID_PARM.
 * Source: John Ehlers, Technical Analysis of Stocks & Commodities, November 1996. */
QX_API int32_t qxMESAsinewave(const qxArray* in, qxArray* sineOut, qxArray* leadOut, int32_t period,
                              int32_t start);

/** Time-cycle markers: 1.0 at start, start + interval, start + 2 interval ..., 0.0 elsewhere. First
 * valid index start. An interval below 1 gives QX_ERR_INVALID_PARM. This library's own
 * definition. */
QX_API int32_t qxFillInterval(const qxBars* bars, qxArray* out, int32_t interval, int32_t start);

/** Fibonacci projections of the move from a to b: with d = a - b, p1 = b + 1.618 d,
 * p2 = b + 2.618 d and p3 = b + 4.236 d; all three are a when a = b. */
QX_API int32_t qxFibonacciProject(double a, double b, double* p1, double* p2, double* p3);

/** Fibonacci retracements of the move from a to b: with d = b - a, r1 = b - 0.382 d,
 * r2 = b - 0.5 d and r3 = b - 0.618 d; all three are a when a = b. */
QX_API int32_t qxFibonacciRetrace(double a, double b, double* r1, double* r2, double* r3);

/* ---- Bar formations and crossovers ---- */

/*
 * Formation tests compare bar `index` with the bar before it and return 1 (bullish), -1 (bearish)
 * or 0 (none). Every comparison is strict, so equal prices never make a formation. They return 0 at
 * bar 0, outside the bars and for a null set. Below, h, l and c are high, low and close of the bar,
 * h', l' and c' those of the bar before it.
 */

/** Closing price reversal, an outside bar (h > h', l' > l) that closes beyond the bar before it:
 * 1 when c > h', -1 when l' > c. */
QX_API int32_t qxCPR(const qxBars* bars, int32_t index);

/** Gap between two bars: 1 when l > h', -1 when l' > h. */
QX_API int32_t qxGap(const qxBars* bars, int32_t index);

/** One-bar island: 1 after a gap down (l' > h) with c > l + 0.7 (h - l), a close in the upper 30 %
 * of the range; -1 after a gap up (l > h') with h - 0.7 (h - l) > c. */
QX_API int32_t qxIslandReversal(const qxBars* bars, int32_t index);

/** Inside bar: 1 when h' > h and l > l'. Never -1. */
QX_API int32_t qxInsideBar(const qxBars* bars, int32_t index);

/** Key reversal: 1 when l' > l and c > c'; otherwise -1 when h > h' and c' > c. */
QX_API int32_t qxKeyReversal(const qxBars* bars, int32_t index);

/** Outside bar: 1 when h > h' and l' > l. Never -1. */
QX_API int32_t qxOutsideBar(const qxBars* bars, int32_t index);

/** Runs a formation test over the bars `first` to `last`, both included and limited to the bars,
 * and writes 1.0, -1.0 or 0.0 for each. The output is cleared first; its first valid index becomes
 * `first`.
 *
 * `name` is, in any letter case, "qxCPR", "qxGap", "qxGapDown" (1 when l' > h), "qxGapUp" (1 when
 * l > h'), "qxIslandReversal", "qxInsideBar", "qxKeyReversal" or "qxOutsideBar".
 *
 * Returns the number of bars with a result other than 0; 0 when `first` is above `last`. An unknown
 * name gives QX_ERR_INVALID_PARM after the output has been cleared. */
QX_API int32_t qxFormationFill(const qxBars* bars, qxArray* out, const char* name, int32_t first,
                               int32_t last);

/** Crossover of two series at `index`: 1 when a[i] >= b[i] and a[i-1] < b[i-1], so that touching
 * from below counts; otherwise -1 when a[i] <= b[i] and a[i-1] > b[i-1]; otherwise 0. 0 at index 0,
 * outside either series and for a null record. */
QX_API int32_t qxCrossOver(const qxArray* a, const qxArray* b, int32_t index);

/** Writes qxCrossOver for the indexes from s + 1 up to but not including `last` (compare
 * qxTurnFill), limited to the series; every other element is 0.0. s is `first` raised to the first
 * valid index of both series, and becomes that of the output. Returns QX_SUCCESS, not a count. */
QX_API int32_t qxCrossOverFill(const qxArray* a, const qxArray* b, qxArray* out, int32_t first,
                               int32_t last);

/** Turn of a series seen at `index`: 1 when element i - 1 is a trough (below both neighbours), -1
 * when it is a peak (above both), otherwise 0. 0 below index 2, outside the series and for a null
 * record. */
QX_API int32_t qxTurn(const qxArray* array, int32_t index);

/** Writes qxTurn for the indexes from s + 2 up to and including `last`, limited to the series;
 * every other element is 0.0. s is `first` raised to the input's first valid index, and becomes
 * that of the output. Returns QX_SUCCESS, not a count. */
QX_API int32_t qxTurnFill(const qxArray* in, qxArray* out, int32_t first, int32_t last);

/* ---- Candles ---- */

/** Classifies every bar of the set into the four codes that qxCandles holds:
 * - colour 0 none (open = close), 1 black (open above close), 2 white (close above open);
 * - body 3 long (above the average body), else 1 small (above lower end * equality), else 0 doji;
 * - upper and lower shadow 3 long (above r * shadowlong), else 1 short (below r * shadowshort),
 *   else 2 normal, where r is the body, and upper end * equality for a candle without colour.
 * The average body is the mean of |open - close| over all bars of the set whose open and close
 * differ; without any, no body is long. Factors that are 0 get their defaults, also in the record.
 * A previous block of codes is not released: call qxCandleFree before constructing again. A set
 * without bars gives an empty block. QX_ERR_MALLOC leaves the record as it was.
 * (Steve Nison, Japanese Candlestick Charting Techniques, describes the candles.) */
QX_API int32_t qxCandleConstruct(const qxBars* bars, qxCandles* candles);

/** Releases the codes; the factors stay. Null is ignored. */
QX_API void qxCandleFree(qxCandles* candles);

/** Codes of one bar: colour, body, upper shadow, lower shadow; 0 outside the constructed bars. */
QX_API int32_t qxCandleColor(const qxCandles* candles, int32_t index);
QX_API int32_t qxCandleShape(const qxCandles* candles, int32_t index);
QX_API int32_t qxCandleTopShadow(const qxCandles* candles, int32_t index);
QX_API int32_t qxCandleBotShadow(const qxCandles* candles, int32_t index);

/** 1 when a * tolerance > |a - b|, else 0. The tolerance is relative to `a` alone. */
QX_API int32_t qxApproxEqual(double a, double b, double tolerance);

/** (open + close) / 2 of a bar, 0.0 outside the set. */
QX_API double qxBodyMidpoint(const qxBars* bars, int32_t index);

/** 1 when the body of the bar lies wholly above that of the bar before it, else 0; 0 at index 0 and
 * outside the set, as for the three that follow. */
QX_API int32_t qxBodyGapUp(const qxBars* bars, int32_t index);

/** 1 when the body of the bar lies wholly below that of the bar before it, else 0. */
QX_API int32_t qxBodyGapDn(const qxBars* bars, int32_t index);

/** 1 when low[i] > high[i-1], else 0. */
QX_API int32_t qxWesternGapUp(const qxBars* bars, int32_t index);

/** 1 when low[i-1] > high[i], else 0. */
QX_API int32_t qxWesternGapDn(const qxBars* bars, int32_t index);

/* ---- Candlestick patterns ---- */

/*
 * Every test below answers whether its pattern completes at bar `index` (i): 1 or 0. It reads the
 * prices of the bars and the codes that qxCandleConstruct gave them; 0 when an earlier bar that it
 * reads is not there, at or beyond the last bar or code, and for null records. A record constructed
 * for another bar set gives meaningless results. The bars of a description stand in order of time,
 * the last one is bar i. "Long", "small" and "doji" name the code of the body, "mid" its midpoint,
 * "a ~ b" is qxApproxEqual(a, b, equality), and a body gaps as qxBodyGapUp and qxBodyGapDn say; all
 * comparisons are strict but for >= and <=. The colours and comparisons are this library's own
 * where textbooks differ: a hammer is black, a shooting star white, tweezers compare closes and
 * opens.
 */

/** Writes the signals of a pattern: out[i] = 1.0 where it completes and 0.0 elsewhere, for the bars
 * first .. last, limited to the data. `name` is the name of a test below in any letter case, with
 * its "qx". Returns the number of bars found, or QX_ERR_INVALID_PARM: at once for an unknown name,
 * with the output untouched, or else from the argument check. The output is prepared as for an
 * indicator, its first valid index stays as it was. */
QX_API int32_t qxCandleFill(const qxBars* bars, const qxCandles* candles, qxArray* out,
                            const char* name, int32_t first, int32_t last);

/* One and two bars. */

/** White long candle that opens at its low. */
QX_API int32_t qxBeltHoldLineBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black long candle that opens at its high. */
QX_API int32_t qxBeltHoldLineBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Doji without a lower shadow: low[i] = min(open[i], close[i]). */
QX_API int32_t qxGravestoneDoji(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Doji with both shadows long. */
QX_API int32_t qxLongLeggedDoji(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Small body and at least one long shadow. */
QX_API int32_t qxHighWave(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black candle, body not long, upper shadow short, lower shadow long. */
QX_API int32_t qxHammer(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White candle, body not long, upper shadow short, lower shadow long. */
QX_API int32_t qxHangingman(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White candle, body not long, upper shadow long, lower shadow short. */
QX_API int32_t qxInvertedHammer(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White candle, small body, upper shadow long, lower shadow short. */
QX_API int32_t qxShootingStar(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White then black, neither a doji; close[i] ~ close[i-1]; open[i] - close[i-1] >= close[i-1] -
 * open[i-1]. */
QX_API int32_t qxCounterAttackBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black then white, neither a doji; close[i] ~ close[i-1]; close[i-1] - open[i] >= open[i-1] -
 * close[i-1]. */
QX_API int32_t qxCounterAttackBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long then black; open[i] > high[i-1]; close[i] < mid[i-1]. */
QX_API int32_t qxDarkCloudCover(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black long then white and no doji; open[i] < close[i-1]; close[i] > mid[i-1]. */
QX_API int32_t qxPiercingLine(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White small then black long; open[i] > close[i-1]; close[i] < open[i-1]. */
QX_API int32_t qxEngulfingLineBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black small then white long; open[i] < close[i-1]; close[i] > open[i-1]. */
QX_API int32_t qxEngulfingLineBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** A small body strictly within the black long body before it. */
QX_API int32_t qxHaramiBlack(const qxBars* bars, const qxCandles* candles, int32_t index);
/** A doji strictly within the black long body before it. */
QX_API int32_t qxHaramiCrossBlack(const qxBars* bars, const qxCandles* candles, int32_t index);
/** A small body strictly within the white long body before it. */
QX_API int32_t qxHaramiWhite(const qxBars* bars, const qxCandles* candles, int32_t index);
/** A doji strictly within the white long body before it. */
QX_API int32_t qxHaramiCrossWhite(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black and no doji, then white small; close[i] ~ low[i-1]; close[i] > low[i-1]. */
QX_API int32_t qxInNeckLine(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black then white; close[i-1] < close[i] < mid[i-1]. */
QX_API int32_t qxThrustingLine(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White then black, neither a doji; open[i] = open[i-1]. The spelling is part of the name. */
QX_API int32_t qxSeperatingLineBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black then white, neither a doji; open[i] = open[i-1]. */
QX_API int32_t qxSeperatingLineBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long then white small; open[i] ~ close[i-1]. */
QX_API int32_t qxStalledPattern(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black then white, neither a doji; open[i] = close[i-1]. */
QX_API int32_t qxTweezerBottoms(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White then black, neither a doji; open[i] = close[i-1]. */
QX_API int32_t qxTweezerTops(const qxBars* bars, const qxCandles* candles, int32_t index);

/* Reversals of three and of five bars. */

/** Black long, doji, white; high[i-1] lies below low[i-2] and below low[i]; close[i] > mid[i-2]. */
QX_API int32_t qxAbandonedBabyBottom(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long, doji, black; low[i-1] lies above high[i-2] and above high[i]; close[i] < mid[i-2].
 */
QX_API int32_t qxAbandonedBabyTop(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long, doji whose body gaps up, black; close[i] < mid[i-2]. */
QX_API int32_t qxEveningDojiStar(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long, small body that gaps up, black; close[i] < mid[i-2]. */
QX_API int32_t qxEveningStar(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black long, doji whose body gaps down, white and no doji; open[i] > open[i-1]; close[i] >
 * mid[i-2]. */
QX_API int32_t qxMorningDojiStar(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black long, small body that gaps down, white and no doji; open[i] > open[i-1]; close[i] >
 * mid[i-2]. */
QX_API int32_t qxMorningStar(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two black candles, then a doji with a short upper and a long lower shadow. */
QX_API int32_t qxDragonflyDojiBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two white candles, then a doji with a short upper and a long lower shadow. */
QX_API int32_t qxDragonflyDojiBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two white candles, then a black one; close[i] ~ close[i-1]. */
QX_API int32_t qxMeetingLinesBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two black candles, then a white one; close[i] ~ close[i-1]. */
QX_API int32_t qxMeetingLinesBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White small with a short upper shadow; a black outside bar with a short lower shadow; black with
 * a short lower shadow; close[i] < low[i-1]. */
QX_API int32_t qxThreeOutsideDown(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black small with a short upper shadow; a white outside bar with a short lower shadow; white with
 * a short upper shadow; close[i] > high[i-1]. */
QX_API int32_t qxThreeOutsideUp(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black long with a short upper and a long lower shadow; a black inside bar with open[i-1] >
 * close[i-2]; black without shadows. */
QX_API int32_t qxThreeStarsInTheSouth(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long, then two black; the body of i-1 gaps up; close[i] < close[i-1]; open[i] > open[i-1].
 */
QX_API int32_t qxUpsideGap2Crows(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Four black candles, the first long and with the largest body, then white long; open[i] <
 * close[i-4]; close[i] > close[i-3]. */
QX_API int32_t qxBreakawayBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Four white candles, the first long and with the largest body, then black long; open[i] >
 * close[i-4]; close[i] < close[i-3]. */
QX_API int32_t qxBreakawayBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Three black long; black with a long upper shadow and high[i-1] > close[i-2]; white long with a
 * short upper shadow, its body gapping up. */
QX_API int32_t qxLadderBottom(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two white, then three dojis; close[i-2] > close[i-3]; close[i-1] above close[i-2] and close[i].
 */
QX_API int32_t qxTriStarBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two black, then three dojis; close[i-2] < close[i-3]. */
QX_API int32_t qxTriStarBull(const qxBars* bars, const qxCandles* candles, int32_t index);

/* Continuations and exhausted moves of three to five bars. */

/** Three white with rising closes, and bodies that shrink from bar to bar; or else an upper shadow
 * of i-2 that is not long and long ones of i-1 and i. */
QX_API int32_t qxAdvanceBlock(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two white long with short upper shadows, then white small whose body gaps up. */
QX_API int32_t qxDeliberationBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two black long with short lower shadows, then black small whose body gaps down. */
QX_API int32_t qxDeliberationBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black, black long, white; open[i] < low[i-1]; close[i] ~ low[i-1]. */
QX_API int32_t qxOnNeck(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two white of one body code, no dojis; the body of i-1 gaps down from i-2; close[i] ~ close[i-1].
 */
QX_API int32_t qxSideBySideWhiteGapDn(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two white of one body code, no dojis; the body of i-1 gaps up from i-2; open[i] ~ open[i-1]. */
QX_API int32_t qxSideBySideWhiteGapUp(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two black, then white with the body code of i-1; open[i] > close[i-1]; open[i-1] < close[i] <
 * close[i-2]; open[i-1] < close[i-2]. */
QX_API int32_t qxTasukiDownsideGap(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Two white, then black with the body code of i-1; open[i] < close[i-1]; close[i-2] < close[i] <
 * open[i-1]; open[i-1] > close[i-2]. */
QX_API int32_t qxTasukiUpsideGap(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Three bodies in a row that gap up from the one before. Reads three earlier bars. */
QX_API int32_t qxThreeGapsUp(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Three bodies in a row that gap down from the one before. Reads three earlier bars. */
QX_API int32_t qxThreeGapsDown(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Three white with short upper shadows and rising highs, each with high ~ close. */
QX_API int32_t qxThreeWhiteSoldiers(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Three black long with falling closes, then white; open[i] < close[i-1]; close[i] > open[i-3]. */
QX_API int32_t qxThreeLineStrikeBear(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Three white long with rising closes, then black; open[i] > close[i-1]; close[i] < open[i-3]. */
QX_API int32_t qxThreeLineStrikeBull(const qxBars* bars, const qxCandles* candles, int32_t index);
/** Black long, three white small, black long; close[i] < close[i-4]; open[i-3] > close[i-4];
 * close[i-3] < close[i-2] < close[i-1]; close[i-1] <= max(open[i], open[i-4]). */
QX_API int32_t qxFalling3Method(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long, three black small, white long; close[i] > close[i-4]; open[i-3] < close[i-4];
 * close[i-3] > close[i-2] > close[i-1]; close[i-1] >= min(open[i], open[i-4]). */
QX_API int32_t qxRising3Method(const qxBars* bars, const qxCandles* candles, int32_t index);
/** White long, three black small with falling opens, white and no doji; the bodies of i-3 and of i
 * gap up. */
QX_API int32_t qxMatHoldPattern(const qxBars* bars, const qxCandles* candles, int32_t index);

/* ---- Options ---- */

/** Sets price, legs and results to zero. */
QX_API int32_t qxOptionInit(qxOptionStrategy* strategy);

/** The standard normal cumulative probability N(x), within 1e-6: with k = 1 / (1 + 0.23164191 |x|),
 * q = 0.39894232 e^(-x^2 / 2) k ((((1.330274 k - 1.821256) k + 1.781478) k - 0.3565638) k +
 * 0.319381511); 1 - q for x > 0, else q. (Abramowitz and Stegun, Handbook of Mathematical
 * Functions, 26.2.17, with constants of this library's own in the last digits.) */
QX_API double qxApprxCumProbDist(double x);

/** Theoretical value of a European option.
 * - leg: strike, type and expiration are read; any type but QX_OPTION_PUT is valued as a call;
 * - price: price of the underlying;
 * - rate: risk-free rate in percent per year;
 * - variance: annual variance of returns, the square of the volatility;
 * - date: date number of the valuation.
 * With t = whole days to the expiration / 360, r = rate / 100, v = sqrt(variance) sqrt(t),
 * d1 = (ln(price / strike) + (r + variance / 2) t) / v and d2 = d1 - v:
 * call = price N(d1) - strike e^(-r t) N(d2), put = strike e^(-r t) N(-d2) - price N(-d1), N being
 * qxApprxCumProbDist. An expired option, a variance of 0, a price or strike not above 0 give
 * infinities or NaNs. (Black and Scholes, The Pricing of Options and Corporate Liabilities.) */
QX_API double qxBlackScholes(const qxOptionLeg* leg, double price, double rate, double variance,
                             double date);

/*
 * The strategies below fill the seven results of the record from its price and the legs they name;
 * other legs are ignored. QX_ERR_INVALID_PARM when the price of the underlying is not above 0: the
 * two moves then stay as they were, the other results are stored. A spread whose maximum profit is
 * 0 has an infinite or undefined ratio. Only qxBearCall takes its strikes in either order.
 */

/** Bull call spread: long1 a call, short1 a call of a higher strike. Loss = long1 premium - short1
 * premium; profit = short1 strike - long1 strike - loss; break-even = long1 strike + loss. */
QX_API int32_t qxBullCall(qxOptionStrategy* strategy);

/** Bull put spread: short1 a put, long1 a put of a lower strike. Profit = short1 premium - long1
 * premium; loss = short1 strike - long1 strike - profit; break-even = short1 strike - profit. */
QX_API int32_t qxBullPut(qxOptionStrategy* strategy);

/** Bear call spread: short1 a call, long1 a call of a higher strike. Profit = short1 premium -
 * long1 premium; loss = |short1 strike - long1 strike| - profit; break-even = short1 strike +
 * profit. */
QX_API int32_t qxBearCall(qxOptionStrategy* strategy);

/** Bear put spread: long1 a put, short1 a put of a lower strike. Loss = long1 premium - short1
 * premium; profit = long1 strike - short1 strike - loss; break-even = long1 strike - loss. */
QX_API int32_t qxBearPut(qxOptionStrategy* strategy);

/** Long straddle: long1 and long2. Loss = the sum of the premiums; break-evens = long1 strike +
 * loss and long1 strike - loss. Profit and ratio are 0. */
QX_API int32_t qxLongStraddle(qxOptionStrategy* strategy);

/** Long strangle: long1 a call, long2 a put, else QX_ERR_INVALID_PARM with nothing stored. Loss =
 * the sum of the premiums; break-evens = long1 strike + loss and long2 strike - loss. Profit and
 * ratio are 0. */
QX_API int32_t qxLongStrangle(qxOptionStrategy* strategy);

/** Short straddle: short1 and short2. Profit = the sum of the premiums; break-evens = short1 strike
 * + profit and short1 strike - profit. Loss and ratio are 0. */
QX_API int32_t qxShortStraddle(qxOptionStrategy* strategy);

/** Short strangle: short1 a call, short2 a put, else QX_ERR_INVALID_PARM with nothing stored.
 * Profit = the sum of the premiums; break-evens = short1 strike + profit and short2 strike -
 * profit. Loss and ratio are 0. */
QX_API int32_t qxShortStrangle(qxOptionStrategy* strategy);

/* ---- Bonds and time value ---- */

/*
 * Rates and yields are in percent per year, dates are date numbers and days are whole days.
 * Degenerate input (a rate of 0 in qxFutureValueAnnuity, a price of 0, a maturity on the valuation
 * date) gives infinities or NaNs; a null record gives 0. With r = rate / 100, m = periods and n =
 * m * years:
 */

/** amount (1 + r / m)^n; -1.0 when periods is not above 0. */
QX_API double qxFutureValue(const qxTimeValue* tv);

/** amount (1 + r / m)^(-n); -1.0 when periods is not above 0. */
QX_API double qxPresentValue(const qxTimeValue* tv);

/** The principal that grows to a future value: futureValue / (1 + r / m)^n, also stored as the
 * record's amount; -1.0 when periods is not above 0, with the record unchanged. */
QX_API double qxFutureValuePrinc(qxTimeValue* tv, double futureValue);

/** The rate at which the amount grows to a future value: 100 ((futureValue / amount)^(1 / years) -
 * 1), also stored as the record's rate. */
QX_API double qxFutureValueInt(qxTimeValue* tv, double futureValue);

/** Value of `years` payments of `amount` at the last of them: amount ((1 + r)^years - 1) / r, r
 * being the rate per payment. */
QX_API double qxFutureValueAnnuity(const qxTimeValue* tv);

/** Value of `years` payments of `amount` one period before the first: amount (1 - 1 / (1 +
 * r)^years) / r; -1.0 when the rate is not above 0. */
QX_API double qxPresentValueAnnuity(const qxTimeValue* tv);

/** Interest accrued over a half-year coupon period: days from lastCoupon to settlement /
 * (daysPerYear / 2) * (coupon / 2), coupon being the amount per year. */
QX_API double qxBondAccrInt(double coupon, double settlement, double lastCoupon,
                            double daysPerYear);

/** Present value of the remaining cash flows at a yield: the sum of coupon / payments / y^t over t
 * = 1 / payments, 2 / payments, ... T, with the face value added to the last, y = 1 + yield / 100
 * and T = (days from `date` to the maturity + 182) / 365 in whole years. The times add up in
 * doubles: where 1 / payments is not exact (3, 12, ...) the last may miss T, and the face value is
 * left out. 0.0 when payments is not above 0. At most a million payments are counted. */
QX_API double qxBondPricing(const qxBond* bond, double yield, double date);

/** Macaulay duration in years on annual cash flows: the sum of k * coupon / (1 + yield / 100)^k
 * over the whole years k = 1 .. Y, with the face value added to the last coupon, divided by the
 * price; Y = days from `date` to the maturity / 365, truncated. (Frederick Macaulay, Some
 * Theoretical Problems Suggested by the Movements of Interest Rates.) */
QX_API double qxBondDuration(const qxBond* bond, double yield, double date);

/** Price change that a duration predicts for a change of yield: -duration ((newYield - oldYield) /
 * 100) / (1 + newYield / 100) * price; -1.0 when newYield is below 1.0. */
QX_API double qxBondDurationPriceChg(double price, double oldYield, double duration,
                                     double newYield);

/** Approximate yield to maturity as a fraction: coupon / price + (face - price) / price / (days to
 * the maturity / 365). */
QX_API double qxYieldtoMaturity(const qxBond* bond, double date);

/** Discount yield of a bill as a fraction: (face - price) / days to the maturity * 360 / face. */
QX_API double qxTBillDiscYield(const qxBond* bill, double date);

/** Bond-equivalent yield of a bill as a fraction: (face - price) / days to the maturity * 365 /
 * price. */
QX_API double qxTBillBondEqYield(const qxBond* bill, double date);

/* ---- File-type dispatch and file information ---- */

/** The QX_FILE_... code of a format given as text: a number 1 to 8 (leading digits count), or in
 * any case AIQ, CSI, CT, DJ, FS, TC or TT. Every other text, the empty one included, is
 * QX_FILE_TEXT: it may name a description file. Null gives 0. */
QX_API int32_t qxFILEtype(const char* type);

/** Finds the record of a date in a file of the format `type`: qxCSIfindrec, qxCTfindrec and so on.
 * For a text file the layout is read first, from "txtinfo.txt" when `type` is "7" or "TXT" (in any
 * case), else from the file that `type` names, in the same folder. `founddate`, which may be null,
 * is set to 0 first. Returns the record number, the format's status, or that of qxTXTreadinfo. */
QX_API int32_t qxFILEfindrec(const char* type, const char* folder, const char* file, double date,
                             double* founddate);

/** Lists a folder's files of the format `type`: qxTXTlist, qxCTlist and so on. */
QX_API int32_t qxFILElist(const char* type, const char* folder, const char* outfile,
                          int32_t append);

/** Reads bars of a file of the format `type`, by the range rule of the text files below: qxTXTread,
 * with the layout found as in qxFILEfindrec, qxCTread and so on. */
QX_API int32_t qxFILEread(const char* type, qxBars* bars, const char* folder, const char* file,
                          int32_t start, int32_t count);

/** Prints the file information of a bar set, one "key value" line for each field that is set; dates
 * in the default date order. `outfile` "STDOUT", in any case, is standard output; another file is
 * appended to when `append` is non-zero, else replaced. QX_ERR_FILE_OPEN, QX_ERR_FILE_WRITE. */
QX_API int32_t qxFILEprintinfo(const qxBars* bars, const char* outfile, int32_t append);

/* ---- CompuTrac files ---- */

/** A CompuTrac folder holds a directory file "master", optionally "xmaster" for file numbers above
 * 255, and one data file "F<number>.DAT" (or ".MWD") per instrument; names are found in any letter
 * case. `file` names the instrument, in any letter case: its data file, its symbol, its symbol with
 * "@" and the period letter (D, I, W, M, Q, Y), its symbol up to the first blank, or its name. The
 * fields of a bar are those of the field-description file "F<number>.DOP" where the folder has a
 * usable one, else those of the period and the number of fields.
 *
 * Statuses of the three functions that name an instrument: QX_ERR_FILE_NOT_FOUND when neither
 * directory has it, QX_ERR_FILE_OPEN when its data file cannot be opened, QX_ERR_FILE_READ when its
 * fields are of no known kind or reading fails; for reading also QX_ERR_MALLOC and, as for an
 * unknown date, QX_ERR_RECORD_NOT_FOUND. A damaged file gives the bars that are really there. */

/** Reads bars: up to `count` from bar `start` on (from 0). A `count` below 0 means all of them, a
 * `start` below 0 the last `count`. A set without storage is allocated, another one filled up to
 * its capacity and sized to what was read; its descriptive fields are set, with the number of bars
 * in `reccnt`. Fields that the file has not are 0. QX_ERR_RECORD_NOT_FOUND when `start` lies past
 * the bars; on any failure before reading the set is left alone. */
QX_API int32_t qxCTread(qxBars* bars, const char* folder, const char* file, int32_t start,
                        int32_t count);

/** Record number of a date number, or of the nearest later date; QX_ERR_RECORD_NOT_FOUND when the
 * date lies outside the file. Stores that record's date through `founddate` unless it is null. */
QX_API int32_t qxCTfindrec(const char* folder, const char* file, double date, double* founddate);

/** Reads one field of the bars into a series: 1 date (a date number), 2 time (a fraction of a day),
 * 3 open, 4 high, 5 low, 6 close, 7 volume, 8 open interest; another field is refused. `start` and
 * `count` as in qxCTread; a `count` of 0 does nothing. */
QX_API int32_t qxCTreadarray(qxArray* array, const char* folder, const char* file, int32_t field,
                             int32_t start, int32_t count);

/** Lists the folder's instruments to `outfile` ("STDOUT" or a file, appended to when `append` is
 * non-zero): file, symbol, name, frequency, first and last date. QX_ERR_FILE_NOT_FOUND, with the
 * header alone, when the folder has no directory; QX_ERR_FILE_OPEN when the output cannot be
 * opened. */
QX_API int32_t qxCTlist(const char* folder, const char* outfile, int32_t append);

/* ---- Other vendors' files ---- */

/** The formats below have no public layout of their data files, so they are recognised, not read.
 * Every find and read operation returns QX_ERR_FILE_NOT_FOUND when the folder has no such data,
 * else QX_ERR_UNKNOWN, and writes nothing. The listings write the common header and return the same
 * statuses; qxCSIlist alone lists the instruments of the folder, from its "qmaster", and returns
 * QX_SUCCESS. A folder is known by these files, in any letter case:
 *   CSI "qmaster", Dow Jones "mapinfo.dat", FutureSource "fsfracs.fil", TeleChart "*.NDX",
 *   TechTools "*.TTD", AIQ "*.DTA".
 * Arguments are those of the CompuTrac operations, and so are the statuses for an output that
 * cannot be opened and for null arguments. */
QX_API int32_t qxCSIfindrec(const char* folder, const char* file, double date, double* founddate);
QX_API int32_t qxCSIlist(const char* folder, const char* outfile, int32_t append);
QX_API int32_t qxCSIread(qxBars* bars, const char* folder, const char* file, int32_t start,
                         int32_t count);

QX_API int32_t qxDJfindrec(const char* folder, const char* file, double date, double* founddate);
QX_API int32_t qxDJlist(const char* folder, const char* outfile, int32_t append);
QX_API int32_t qxDJread(qxBars* bars, const char* folder, const char* file, int32_t start,
                        int32_t count);

QX_API int32_t qxFSfindrec(const char* folder, const char* file, double date, double* founddate);
QX_API int32_t qxFSlist(const char* folder, const char* outfile, int32_t append);
QX_API int32_t qxFSread(qxBars* bars, const char* folder, const char* file, int32_t start,
                        int32_t count);

QX_API int32_t qxTCfindrec(const char* folder, const char* file, double date, double* founddate);
QX_API int32_t qxTClist(const char* folder, const char* outfile, int32_t append);
QX_API int32_t qxTCread(qxBars* bars, const char* folder, const char* file, int32_t start,
                        int32_t count);

QX_API int32_t qxTTfindrec(const char* folder, const char* file, double date, double* founddate);
QX_API int32_t qxTTlist(const char* folder, const char* outfile, int32_t append);
QX_API int32_t qxTTread(qxBars* bars, const char* folder, const char* file, int32_t start,
                        int32_t count);

QX_API int32_t qxAIQfindrec(const char* folder, const char* file, double date, double* founddate);
QX_API int32_t qxAIQlist(const char* folder, const char* outfile, int32_t append);
QX_API int32_t qxAIQread(qxBars* bars, const char* folder, const char* file, int32_t start,
                         int32_t count);

/* ---- Delimited text files ---- */

/*
 * Data files: every operation names a file by a folder and a file name. White space around both is
 * dropped, a backslash is put between them unless the folder is empty or ends in a backslash or
 * colon, and the whole is cut to 255 characters. On Linux a backslash opens as a slash.
 *
 * Range of records (`start`, `count`) of every reader, for a file of N records counted from 0: a
 * `count` below 0 means all records from `start` on, a `start` below 0 the last `count` records.
 * A `start` of N or more gives QX_ERR_RECORD_NOT_FOUND. An output without storage is allocated with
 * `count` elements, also when the file has fewer; one with storage takes at most its capacity.
 *
 * Text price files hold one bar a line, with fields separated by runs of delimiter characters, so
 * that a field is never empty and later fields move up where one is left out. Fields count from 1.
 * Lines end in LF or CRLF, the text also at a control-Z. A line of more than 254 characters,
 * newline included, is read as several. Numbers are decimal text with a point, whatever the C
 * locale; other text reads as 0.
 *
 * A file that cannot be opened (a folder cannot) gives QX_ERR_FILE_OPEN; one whose reading fails
 * QX_ERR_FILE_READ, one whose writing fails QX_ERR_FILE_WRITE.
 */

/** Reads the description file of a folder of text files (usually "txtinfo.txt") into `info`.
 *
 * Each line is a key, "=" and a value, keys in any case: delimit (the delimiter characters, at most
 * 16, "\t" for a tab and "_" for a blank), skip, dt, ti, op, hi, lo, cl, vol, oi (integers, see
 * qxTXTinfo) and dtformat (YMD, MDY, DMY, or a longer name of the same order such as MM_DD_CCYY).
 * Unknown keys and orders are ignored, a later line wins. `info` is cleared first, its delimiter
 * set to one blank, also when the file cannot be opened. */
QX_API int32_t qxTXTreadinfo(const char* folder, const char* file, qxTXTinfo* info);

/** Creates or replaces a description file. */
QX_API int32_t qxTXTwriteinfo(const char* folder, const char* file, const qxTXTinfo* info);

/** Reads bars of a text file laid out as `info`, in ascending order of date.
 *
 * The first two different dates tell whether the file ascends or descends; equal dates alone count
 * as ascending. An ascending file follows the range rule, and the set's size becomes the number of
 * bars read. In a descending file (newest line first) bars are stored from the last one back, and
 * the set's size stays what it was or what the allocation made it:
 * - `start` 0: the oldest `count` records; below 0: the newest `count` records;
 * - `start` above 0: the `count` records that end `start` lines below the top;
 * - `count` below 0: all records, or with a `start` above 0 the oldest `start` + 1.
 *
 * The date series takes the date field plus, where `ti` differs from `dt`, the time field. Fields
 * that a line lacks are 0. Blank lines are passed over; a line of blanks alone counts as a record
 * of the file but gives no bar. The set's descriptive fields are filled: filetype QX_FILE_TEXT,
 * reccnt, path, name, and description and symbol with the file name up to its first point.
 *
 * `count` 0 fills the descriptive fields and empties the set. QX_ERR_RECORD_NOT_FOUND
 * leaves the set as it was, QX_ERR_MALLOC as qxAllocBars does, QX_ERR_FILE_READ with the bars read
 * until then. */
QX_API int32_t qxTXTread(qxBars* bars, const char* folder, const char* file, const qxTXTinfo* info,
                         int32_t start, int32_t count);

/** Reads field number `field` of each record into a series, by the range rule, in the order of the
 * file; a line without that field gives 0. `delimiters` is a zero-terminated set, `skip` the number
 * of header lines. The series' size becomes the number of values read. `count` 0 returns at once.
 * Statuses as qxTXTread. */
QX_API int32_t qxTXTreadarray(qxArray* array, const char* folder, const char* file,
                              const char* delimiters, int32_t skip, int32_t field, int32_t start,
                              int32_t count);

/** Number (from 0) of the record dated `date`, date plus time, or of the nearest later one;
 * QX_ERR_RECORD_NOT_FOUND when the date lies outside the file's dates. Files may ascend or descend.
 * `founddate` (may be null) receives that record's date and is left alone when there is none. A
 * time field that stands before the date field does not count, and lines of blanks alone are not
 * numbered. */
QX_API int32_t qxTXTfindrec(const char* folder, const char* file, const qxTXTinfo* info,
                            double date, double* founddate);

/** Lists a folder's files *.ASC, *.CSV, *.PRN and *.TXT, the description file left out: name,
 * symbol (the name up to its first point), long name and date of the last modification in the
 * default date order. `outfile` "STDOUT", in any case, is standard output; another file is appended
 * to when `append` is non-zero, else replaced. A folder that cannot be listed gives the header
 * alone. */
QX_API int32_t qxTXTlist(const char* folder, const char* outfile, int32_t append);

/** Writes a text, as it is, to an output named as for qxTXTlist. */
QX_API int32_t qxTXTwrite(const char* text, const char* outfile, int32_t append);

/** Writes a text and a line end to an output named as for qxTXTlist. */
QX_API int32_t qxTXTwriteline(const char* text, const char* outfile, int32_t append);

/* ---- Trading simulation: orders and positions ---- */

/*
 * A simulation: initialise a system over a bar set; then, in a loop, call qxProcessOrders, which
 * moves to the next bar and fills what that bar allows, and place or withdraw orders while it
 * returns 1; print the reports; close. Settings are changed by writing the record's fields after
 * qxOrderSystemInit. The bar set must stay alive, and its series unmoved, until the system is
 * closed; a system reads the bars that its date, open, high, low and close all hold.
 */

/** Starts a system over `bars`: clears the whole record (tables of an earlier use are not released,
 * see qxOrderSystemClose), allocates the tables of 16 orders, 16 positions and a trade for every
 * fourth bar, copies `name` (79 characters at most) and the bar-set record, and sets tick and
 * tickvalue to 0.001, margin to 100.0, reverse, allowlong and allowshort to 1, bar to -1 and all
 * else to 0. QX_ERR_MALLOC leaves the record cleared. Every table holds one slot more than its
 * capacity. */
QX_API int32_t qxOrderSystemInit(qxOrderSystem* system, const char* name, const qxBars* bars);

/** Back to bar -1 without orders, positions, trades, statistics and market position. Settings and
 * tables stay, so that the system can run again. */
QX_API int32_t qxOrderSystemReset(qxOrderSystem* system);

/** Releases the tables and clears their capacities and counts. Null is ignored; closing twice is
 * safe. */
QX_API void qxOrderSystemClose(qxOrderSystem* system);

/** Places an order to enter long.
 * @param name         19 characters at most; the position and its trade carry it
 * @param volume       units
 * @param price        price of a stop or limit order; ignored for market and close orders, which
 *                     store 0 and the current bar's close
 * @param ordertype    QX_ORDER_MARKET, QX_ORDER_STOP, QX_ORDER_LIMIT or QX_ORDER_CLOSE; an order of
 *                     another type never fills
 * @param timeinforce  QX_FORCE_BAR: dropped after one qxProcessOrders, whether or not its delay has
 *                     passed; any other value: until filled, cancelled or withdrawn by another
 *                     entry of the same direction
 * @return QX_SUCCESS, also when allowlong is 0 and nothing was placed; QX_ERR_MALLOC when the order
 *         table cannot grow
 *
 * An order carries the date of the current bar and is first looked at on the next one. Before the
 * first bar and past the last one its date, and the close it may need, are 0.0. */
QX_API int32_t qxBuyToOpen(qxOrderSystem* system, const char* name, uint32_t volume, double price,
                           int32_t ordertype, int32_t timeinforce);

/** Places an order to enter short; ignored when allowshort is 0. A market order stores the price
 * 3.4028234663852886e38. Otherwise as qxBuyToOpen. */
QX_API int32_t qxSellToOpen(qxOrderSystem* system, const char* name, uint32_t volume, double price,
                            int32_t ordertype, int32_t timeinforce);

/** Places an order to leave long positions, oldest first: those entered under `fromname` (19
 * characters at most, case counts), or any when it is empty. `volume` beyond what is open is
 * dropped, and an exit that finds nothing to close is used up when its price is reached. Otherwise
 * as qxSellToOpen, without its check. */
QX_API int32_t qxSellToClose(qxOrderSystem* system, const char* name, const char* fromname,
                             uint32_t volume, double price, int32_t ordertype, int32_t timeinforce);

/** Places an order to leave short positions. Otherwise as qxSellToClose; a market order stores the
 * price 0. */
QX_API int32_t qxBuyToClose(qxOrderSystem* system, const char* name, const char* fromname,
                            uint32_t volume, double price, int32_t ordertype, int32_t timeinforce);

/** Marks the orders of that name cancelled, or all when `name` is empty, and returns how many slots
 * it marked. The slot after the last order is visited too: cancelling all returns the number of
 * orders plus one. The orders leave the table on the next bar. */
QX_API int32_t qxCancelOrder(qxOrderSystem* system, const char* name);

/* ---- Trading simulation: order processing ---- */

/** Moves to the next bar and fills the pending orders that it allows; returns 1 while the
 * simulation goes on and 0 when there is no further bar. The first call only moves to bar 0.
 *
 * On bar b with open O, high H, low L and tick t, in this order:
 * - Orders are sorted, exits first, then market entries, buys by rising and sells by falling price
 *   (by insertion, each order moving down while it comes before its left neighbour).
 * - Each order that is not cancelled, and whose date plus delay / 86400 whole days is not after the
 *   date of b, is tested at its price P. A market order fills at O, a close order at the close of
 *   bar b - 1. A price reached from below (buy stop, sell limit) fills when P <= H: at P rounded to
 *   the nearest multiple of t, or at L when the whole bar lies at or above P. A price reached from
 *   above (sell stop, buy limit) fills when L <= P: at P cut to a multiple of t, or at H when the
 *   whole bar lies at or below P. Entries add a tick to a rounded and take a tick from a cut price.
 *   With gapfill, a stop or limit that the open has reached or passed fills at O.
 * - An entry is passed over when one of its direction has filled on this bar, and, unless pyramid
 *   is set, while the market position of the last bar's end is in its direction. It opens a
 *   position at its fill price cut to a multiple of t and, when reverse is set, closes the
 *   positions of the other direction at that fill; one opened on this same bar vanishes without a
 *   trade.
 * - An exit closes positions of the other direction, oldest first, as qxSellToClose tells.
 * - What stays open is valued at the close: open profit, market position, volumes, average price
 *   and bar counts. Without any position in the table these fields keep their values.
 * - Finished orders go: those for one bar, cancelled ones, filled exits, and every entry of a
 *   direction in which one has filled. Closed positions go.
 *
 * Multiples of the tick are found with remainders of doubles, so that a price of 10.2 with tick
 * 0.001 may be stored as 10.199. A position or trade for which there is no memory is dropped; the
 * statistics still count the trade. */
QX_API int32_t qxProcessOrders(qxOrderSystem* system);

/* ---- Trading simulation: reports ---- */

/*
 * Every report goes to `outfile`: "STDOUT" in any case, or a file, appended to when `append` is not
 * 0 and replaced otherwise. QX_ERR_FILE_OPEN when it cannot be opened, QX_ERR_FILE_WRITE when
 * writing fails. Dates print in the default date order (qxSetDefaultDateFormat). Money prints as
 * its whole part and two decimals, both cut and not rounded; the sign is lost between -1 and 0.
 *
 * The profit of a trade of q units from entry price e to exit price x is
 *   ((q * (tickvalue * (x - e) / tick - unitcost)) - 2 * sidecost) * (1 - deduction)
 * with (e - x) for a short trade.
 */

/** Prints the statistics of all, the long and the short trades, one line each under a heading with
 * the dates of the first and the last bar (date number 0.0 for a system of no bars). Profit factor
 * and streaks of all trades are the sum and the larger of the two sides'; the pessimistic return
 * ratio (PRR) is the gain of sqrt(W) fewer winners over the loss of sqrt(L) more losers. */
QX_API int32_t qxProfitRpt(const qxOrderSystem* system, const char* outfile, int32_t append);

/** Writes the same statistics for programs: on each line a code (NP GP GL NT PP NW NL LW LL AW AL
 * WL AT MW ML WS LS MD PF MC AS RA PR OP), then the value of all, the long and the short trades,
 * separated by the first character of `delimiter` (a tab when it is null or empty). */
QX_API int32_t qxProfitRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                            const char* delimiter);

/** Prints the closed trades, two lines each: entry, and exit with the profit. */
QX_API int32_t qxPrintTrades(const qxOrderSystem* system, const char* outfile, int32_t append);

/** Prints the pending orders, one line each: date and time placed, entry or exit, direction (B or
 * S), name, type, price, volume, time in force and the entry that an exit closes. */
QX_API int32_t qxPrintOrders(const qxOrderSystem* system, const char* outfile, int32_t append);

/** Writes the closed trades, one line each: system, symbol, and for entry and exit date and time,
 * bar, direction, name, price and volume; last the profit. With a `delimiter` of a single blank
 * the columns have fixed widths, otherwise the delimiter stands between the bare fields. Header
 * lines are written when `header` is not 0. */
QX_API int32_t qxTradeRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                           const char* delimiter, int32_t header);

/** Writes the open positions in the manner of qxTradeRpt1, without an exit name. The exit side is
 * the mark: the last bar at or before the current one, its close, the opposite direction, the
 * remaining volume, and the open profit without costs. */
QX_API int32_t qxOpenPosRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                             const char* delimiter, int32_t header);

/** Writes the pending orders in the manner of qxTradeRpt1: system, symbol, date and time placed,
 * Entry or Exit, direction, name, type, price, volume, time in force (Bar or GTC), and the entry
 * that an exit closes. */
QX_API int32_t qxOrderRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                           const char* delimiter, int32_t header);

/* ---- Trading simulation: optimisation variables and markers ---- */

/** Stores each variable's number of values, the whole part of (to - from) / step + 1 (1 when step
 * is 0), and returns the number of combinations, their product: 0 when a count is below 1,
 * 4294967295 when the product is beyond 32 bits. */
QX_API uint32_t qxOptVarCount(qxOptVar* vars, int32_t n);

/** Sets every variable to its value in combination `k`, counted from 1; the first variable changes
 * fastest. QX_ERR_INVALID_PARM, with the values unchanged, when k is 0 or above the number of
 * combinations. Stores the counts as qxOptVarCount does. */
QX_API int32_t qxOptVarValue(qxOptVar* vars, int32_t n, uint32_t k);

/** Writes the current values separated by `separator`, each variable at the same width for all of
 * its values: as many decimals (8 at most) and places as max(|from|, |to|) + |step| needs. Values
 * are cut, not rounded. `out` must have the room that qxOptVarStringLen tells. */
QX_API int32_t qxOptVarString(const qxOptVar* vars, int32_t n, const char* separator, char* out);

/** Bytes that qxOptVarString writes, terminator included. */
QX_API int32_t qxOptVarStringLen(const qxOptVar* vars, int32_t n, const char* separator);

/** Fills `markers` (allocated at the bars' capacity when it has no storage) from the closed trades:
 * each bar holds the sum of 1 for a long entry, 2 for a short entry, 4 for an exit by a buy and 8
 * for an exit by a sell. QX_ERR_INVALID_PARM when the bar set is empty; the first valid index is
 * left alone. */
QX_API int32_t qxCreateTradeGraph(const qxOrderSystem* system, qxArray* markers);

/* ---- Graph model ---- */

/** Clears the record and sets the defaults: bar width 4, fonts "Arial" of 8 points, the system's
 * colours, header "Quorvex". Also reads the month names of the date axis from the user's locale.
 * Arrays that the record held are not released: use qxGraphFree on a graph in use. Null is ignored.
 */
QX_API void qxGraphInit(qxGraph* graph);

/** Releases the panes with their charts, lines and shapes and clears the record. The series and
 * bars shown stay the caller's. Null and a graph that is not initialised are ignored. */
QX_API void qxGraphFree(qxGraph* graph);

/** Makes sure that pane `index` exists; -1 means a new one after the last. All panes up to it are
 * created: the first with height share 100 and the graph's background, each other with the height,
 * colours and grid pens of the one before. An existing pane is left alone. A graph that is not
 * initialised is initialised first, here and in every other Add. QX_ERR_MALLOC, with no pane
 * created, when the array cannot grow, and at an index of 5899680 or more. */
QX_API int32_t qxGraphSubwinAdd(qxGraph* graph, int32_t index);

/** Removes a pane with all that it holds; -1 means the last. The later ones move up by one. */
QX_API int32_t qxGraphSubwinRemove(qxGraph* graph, int32_t index);

/** Moves pane `from` to place `to`; those between shift by one toward the gap. Equal places return
 * QX_SUCCESS whatever the graph holds. */
QX_API int32_t qxGraphSubwinOrder(qxGraph* graph, int32_t from, int32_t to);

/** Adds a chart to a pane or replaces one. The record holds copies of `series` and `bars`, not
 * their values, which must live as long as the graph shows them.
 * @param subwin      pane, created when missing; -1: a new pane
 * @param chart       place in the pane, at most the number of charts; -1: a new chart at the end
 * @param scaleFlags  QX_SCALE_LOG and QX_SCALE_INVERTED, combined
 * @param minMode     QX_SCALE_SHOWN: painting finds the minimum over the bars in view;
 *                    QX_SCALE_WHOLE: over the whole series; otherwise `minimum` is kept
 * @param maxMode     the same for the maximum
 * @param scaleChart  chart of the pane whose scale is shared; the chart's own index for its own.
 *                    Not checked: a missing chart means the chart itself
 * @param series      values to draw; empty: the closes of `bars` are drawn. Must not be empty for
 *                    QX_CHART_TRADES
 * @param bars        bars behind the chart; may be empty, but not for styles 1 to 4
 * @param style       QX_CHART_...
 * @param colour      0x00BBGGRR, with two more colours whose use depends on the style
 * @param penWidth    pixels
 * @param penStyle    QX_PEN_..., for QX_CHART_HISTOGRAM and QX_CHART_AREA a 4 x 4 fill pattern
 * @param selected    1 to mark the chart as selected
 * The first chart of a graph whose first and last shown bars are equal brings all its bars into
 * view. QX_ERR_INVALID_PARM with nothing changed for null or empty input and bad indexes;
 * QX_ERR_MALLOC when an array cannot grow. */
QX_API int32_t qxGraphChartAdd(qxGraph* graph, int32_t subwin, int32_t chart, int32_t scaleFlags,
                               int32_t minMode, int32_t maxMode, double minimum, double maximum,
                               int32_t scaleChart, const qxArray* series, const qxBars* bars,
                               int32_t style, uint32_t colour, uint32_t colour2, uint32_t colour3,
                               int32_t penWidth, int32_t penStyle, int32_t selected);

/** Removes a chart; -1 means the last pane or chart. When other charts share its scale, the first
 * of them carries the scale on; else the first chart with the same scale flags, modes, minimum and
 * maximum does. Lines, shapes and value axes of the removed chart go over to that heir. Without an
 * heir the lines and shapes are removed and the axes show chart 0. References to later charts
 * follow them to their new places. */
QX_API int32_t qxGraphChartRemove(qxGraph* graph, int32_t subwin, int32_t chart);

/** Adds a horizontal line at `price` or replaces one. Pane -1 is a new pane, line -1 a new line; a
 * missing pane is created.
 * @param chart     chart of the pane whose scale places the line, not checked
 * @param price     value at which it stands
 * @param colour    0x00BBGGRR
 * @param penWidth  pixels
 * @param penStyle  QX_PEN_...
 * @param selected  1 to mark the line as selected
 * QX_ERR_INVALID_PARM with nothing changed when `line` is above the number of lines; QX_ERR_MALLOC
 * when an array cannot grow. */
QX_API int32_t qxGraphLineAdd(qxGraph* graph, int32_t subwin, int32_t line, int32_t chart,
                              double price, int32_t colour, int32_t penWidth, int32_t penStyle,
                              int32_t selected);

/** Removes a line; -1 means the last pane or line. */
QX_API int32_t qxGraphLineRemove(qxGraph* graph, int32_t subwin, int32_t line);

/** Adds a shape or replaces one, as qxGraphLineAdd does with lines.
 * @param kind           QX_SHAPE_...
 * @param x1,y1,x2,y2    two opposite points: x a bar position, y a value. Unless x2 is greater than
 *                       x1 the two points are swapped, also when the two are equal */
QX_API int32_t qxGraphShapeAdd(qxGraph* graph, int32_t subwin, int32_t shape, int32_t chart,
                               int32_t kind, double x1, double y1, double x2, double y2,
                               int32_t colour, int32_t penWidth, int32_t penStyle,
                               int32_t selected);

/** Removes a shape; -1 means the last pane or shape. */
QX_API int32_t qxGraphShapeRemove(qxGraph* graph, int32_t subwin, int32_t shape);

/** Sets the margins by which painting pads a scale at its top and bottom, in pixels, for all
 * graphs of the process: scales found from bars (initially 2) and from series (initially 1).
 * Returns the series margin. */
QX_API int32_t qxGraphSetSubwinMargins(int32_t barMargin, int32_t seriesMargin);

/** Copies a pane's record out; -1 means the last. The copy holds the addresses of the pane's
 * arrays, not the arrays. On a bad index the record is cleared: QX_ERR_INVALID_PARM. */
QX_API int32_t qxGraphGetSubwin(const qxGraph* graph, qxGraphSubwin* record, int32_t subwin);

/** Stores a pane's record whole, the addresses and counts of its arrays included: the record must
 * come from qxGraphGetSubwin after the last Add or Remove of that pane. */
QX_API int32_t qxGraphSetSubwin(qxGraph* graph, const qxGraphSubwin* record, int32_t subwin);

/** Copy one element's record out of a graph; every index may be -1 for the last. On a bad index the
 * record is cleared: QX_ERR_INVALID_PARM. */
QX_API int32_t qxGraphGetChart(const qxGraph* graph, qxGraphChart* record, int32_t subwin,
                               int32_t chart);
QX_API int32_t qxGraphGetLine(const qxGraph* graph, qxGraphLine* record, int32_t subwin,
                              int32_t line);
QX_API int32_t qxGraphGetShape(const qxGraph* graph, qxGraphShape* record, int32_t subwin,
                               int32_t shape);

/** Replace one element's record in a graph; every index may be -1 for the last. Set never appends:
 * on a bad index nothing changes, QX_ERR_INVALID_PARM. */
QX_API int32_t qxGraphSetChart(qxGraph* graph, const qxGraphChart* record, int32_t subwin,
                               int32_t chart);
QX_API int32_t qxGraphSetLine(qxGraph* graph, const qxGraphLine* record, int32_t subwin,
                              int32_t line);
QX_API int32_t qxGraphSetShape(qxGraph* graph, const qxGraphShape* record, int32_t subwin,
                               int32_t shape);

/** The same for the elements of a pane's record, as qxGraphGetSubwin gives it. */
QX_API int32_t qxGraphSubwinGetChart(const qxGraphSubwin* subwin, qxGraphChart* record,
                                     int32_t chart);
QX_API int32_t qxGraphSubwinSetChart(qxGraphSubwin* subwin, const qxGraphChart* record,
                                     int32_t chart);
QX_API int32_t qxGraphSubwinGetLine(const qxGraphSubwin* subwin, qxGraphLine* record, int32_t line);
QX_API int32_t qxGraphSubwinSetLine(qxGraphSubwin* subwin, const qxGraphLine* record, int32_t line);
QX_API int32_t qxGraphSubwinGetShape(const qxGraphSubwin* subwin, qxGraphShape* record,
                                     int32_t shape);
QX_API int32_t qxGraphSubwinSetShape(qxGraphSubwin* subwin, const qxGraphShape* record,
                                     int32_t shape);

/* ---- Graph scaling and hit test ---- */

/** Pixel position of a value at a bar, in the scale of a chart as painting left it:
 *   y = bottom - d - 1 (inverted scale: top + d),
 *   d = floor((value - minimum) * ((bottom - top - 1) / (maximum - minimum)) + 0.5),
 * with base-10 logarithms of the three values on a logarithmic scale; 0 when the scale has no span.
 *   x = floor((bar - first) * width + left + inset + 1.5),
 * where `first` is the last shown bar less the n bars that fit (not below 0), n = (right - left) /
 * width - 1, and the inset is width / 2 - 1 within 1..10.
 * Returns 0 when the point is in view, 1 when its bar is not (outside first .. the larger of the
 * last shown bar and n), 2 when y is above the pane or below its bottom, 3 when neither is.
 * QX_ERR_INVALID_PARM, with x and y unwritten, when the graph is not initialised or an index is
 * bad. */
QX_API int32_t qxGraphGetXYpos(const qxGraph* graph, int32_t subwin, int32_t chart, int32_t bar,
                               double value, int32_t* x, int32_t* y);

/** What lies under a point of a painted graph. Shapes are in front, then the charts from the last
 * to the first, then the lines. Charts are hit where they are drawn, within one pixel; lines on
 * their row and the one above; segments two rows thick (two columns where vertical), reaching one
 * row further at their far end; rectangles and ellipses on their two outermost pixels.
 * @param deviceContext  the device of the painting, whose dots per inch size the trade arrows; may
 *                       be null: 96 dots
 * @param x,y            device units
 * @param result         the answer: kind, pane, element; in the bar area and the date strip also
 *                       the bar position of the point, firstshown + (x - left - 1) / width (less 1
 *                       at bar width 1), and the x of that bar's line. In the value-axis strip and
 *                       between the strips these are those of the first shown bar; in header and
 *                       footer and outside the drawing area they are 0.
 * Always returns 0, except QX_ERR_INVALID_PARM for null records. */
QX_API int32_t qxGraphGetXYinfo(const qxGraph* graph, void* deviceContext, int32_t x, int32_t y,
                                qxGraphInfo* result);

/** Marks one element as selected.
 * @param kind  QX_HIT_CHART, QX_HIT_LINE or QX_HIT_SHAPE
 * @param keep  0: all other selections of the graph are cleared first
 * Returns 1 when any mark changed, so that the graph must be painted again, else 0. A bad index
 * marks nothing, but still clears when asked. */
QX_API int32_t qxGraphSelectObject(qxGraph* graph, int32_t subwin, int32_t index, int32_t kind,
                                   int32_t keep);

/* ---- Graph painting ---- */

/** Paints the whole graph onto a Windows device context: a window, a bitmap or a printer page. The
 * device's state is saved on entry and restored on exit.
 *
 * The layout is stored into the graph: the drawing area (when it was all 0), header, footer, date
 * and value strips, the bar area and each pane's rectangle; so is the scale of every chart. Charts
 * of a pane that name the same scale chart share its scale. Each end of it comes from where the
 * modes of the scale chart say, over all those charts but the ones of style QX_CHART_TRADES: lows
 * and highs for styles 1 to 3, else the series, zeros counted. An end that was found is moved out
 * by margin * (maximum - minimum) / rows of the pane; the bar margin where the scale chart has
 * style 1 to 3, else the series margin (qxGraphSetSubwinMargins). A logarithmic minimum stays above
 * 0. An end that is kept, or for which no finite value is found, stays as it is.
 *
 * The bars drawn are firstshown .. lastshown as far as they fit. The dates come from the first
 * chart that has any, in the order of panes and charts.
 * @param graph          initialised first when it is not
 * @param deviceContext  an HDC
 * A drawing area of all 0 becomes the client area of the device's window, or the printable part of
 * a page. QX_ERR_INVALID_PARM for an empty or inverted area, a null device, and off Windows;
 * QX_ERR_MALLOC. */
QX_API int32_t qxGraphPaint(qxGraph* graph, void* deviceContext);

/** Paints the graph into a bitmap of the size of its drawing area, which must be set beforehand,
 * and returns it as an OLE picture: an IDispatch pointer that the caller releases. Null on any
 * failure and off Windows. */
QX_API void* qxGraphPaintPicture(qxGraph* graph);

/** Paints the header and the footer alone, in the strips of the last painting; for a changed header
 * text or range of bars. QX_ERR_INVALID_PARM for a graph that is not initialised, a null device,
 * and off Windows. */
QX_API int32_t qxGraphRefreshHeadFoot(qxGraph* graph, void* deviceContext);

/** Paints the graph as qxGraphPaint does, into an SVG file of the size of its drawing area, which
 * must be set beforehand; on every platform and without a device, with built-in text metrics of an
 * Arial-compatible face at 96 dots per inch. Texts are read as code page 1252.
 * @param fileName  written anew; not created when the graph cannot be painted
 * QX_ERR_INVALID_PARM for an empty or inverted area; QX_ERR_FILE_OPEN when the file cannot be
 * created; QX_ERR_FILE_WRITE when its writing fails; QX_ERR_MALLOC. */
QX_API int32_t qxGraphPaintSVG(qxGraph* graph, const char* fileName);

/* ---- Point and figure ---- */

/** Point-and-figure columns from closing prices. A column of boxes rises or falls until the close
 * moves `reversal` boxes against it; then the next column opens one box beyond the extreme.
 * @param bars      input
 * @param columns   output, zero-filled before: one bar per column. date: that of the bar that
 * opened the column; open: its first box, 0 in the first column; high and low: its extremes; close:
 * its end, the low of a falling and the high of a rising column; volume: its boxes, floor((high -
 * low + box) / box), 0 in the last column; openint: +1.0 rising (X), -1.0 falling (O)
 * @param map       output, zero-filled before: for every input bar the index of its column
 * @param box       size of a box in price units, above 0
 * @param reversal  boxes of a reversal, above 0
 * @param start     the bars up to and including it are skipped; the first direction is that of the
 *                  first close at least one box away from the close at `start`
 * QX_ERR_INVALID_PARM with nothing allocated for bad arguments, an output that is the input, or a
 * start at or past the last bar; QX_ERR_INVALID_PARM with both outputs allocated when no direction
 * is found; QX_ERR_MALLOC. Both outputs are the caller's to free. After Victor de Villiers, The
 * Point and Figure Method. */
QX_API int32_t qxBars2PNF(const qxBars* bars, qxBars* columns, qxArray* map, double box,
                          double reversal, int32_t start);

/** As qxBars2PNF, from highs and lows: a rising column follows the highs until a low is `reversal`
 * boxes below its high, a falling one the lows until a high is as far above its low. The first
 * direction is rising after a bar a box above the first high with a low above the first low, and
 * falling after the reverse; a bar a box beyond both only moves the two bounds. */
QX_API int32_t qxBars2PNFhilo(const qxBars* bars, qxBars* columns, qxArray* map, double box,
                              double reversal, int32_t start);

/** Prints columns as a text chart: one line per box from the top down, the price of the box, then
 * an X or an O for each column that covers it. Each line begins with a line break and none ends the
 * file.
 * @param columns   output of qxBars2PNF or qxBars2PNFhilo
 * @param box       size of a box, as for the columns
 * @param fileName  text file, written anew when `append` is 0 and otherwise extended
 * QX_ERR_FILE_OPEN when the file cannot be opened; QX_ERR_FILE_WRITE when its writing fails;
 * QX_ERR_INVALID_PARM without columns, or for a box that is not above 0, too small to change a
 * price of this size, or so small that the chart would have more than ten million lines. */
QX_API int32_t qxPNFchart(const qxBars* columns, double box, const char* fileName, int32_t append);

#ifdef __cplusplus
}
#endif

#endif /* QUORVEX_H */
