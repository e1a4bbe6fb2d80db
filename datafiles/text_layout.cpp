// The description file of a folder of text price files: reading and writing its layout.
#include <cstdio>
#include <cstring>

#include "core/ascii.h"
#include "core/decimal_text.h"
#include "core/line_reader.h"
#include "core/text_fields.h"
#include "datafiles/paths.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr size_t kLayoutLineLength = 79;

struct OrderName {
  std::string_view name;
  int32_t order;
};

constexpr OrderName kOrderNames[] = {
    {"N/A", QX_ORDER_YMD},        {"YMD", QX_ORDER_YMD},        {"MDY", QX_ORDER_MDY},
    {"DMY", QX_ORDER_DMY},        {"YY_MM_DD", QX_ORDER_YMD},   {"YYMMDD", QX_ORDER_YMD},
    {"MMDDYY", QX_ORDER_MDY},     {"DDMMYY", QX_ORDER_DMY},     {"CCYY_MM_DD", QX_ORDER_YMD},
    {"MM_DD_YY", QX_ORDER_MDY},   {"MM_DD_CCYY", QX_ORDER_MDY}, {"DD_MM_YY", QX_ORDER_DMY},
    {"DD_MM_CCYY", QX_ORDER_DMY}, {"CCYYMMDD", QX_ORDER_YMD},   {"MMDDCCYY", QX_ORDER_MDY},
    {"DDMMCCYY", QX_ORDER_DMY}};

// The integer keys in the order in which they are written.
struct IntegerKey {
  const char* key;
  int32_t qxTXTinfo::*field;
};

constexpr IntegerKey kIntegerKeys[] = {
    {"skip", &qxTXTinfo::skip}, {"dt", &qxTXTinfo::dt},   {"ti", &qxTXTinfo::ti},
    {"op", &qxTXTinfo::op},     {"hi", &qxTXTinfo::hi},   {"lo", &qxTXTinfo::lo},
    {"cl", &qxTXTinfo::cl},     {"vol", &qxTXTinfo::vol}, {"oi", &qxTXTinfo::oi}};

bool isKey(std::string_view text, std::string_view key) {
  return text.size() == key.size() && equalIgnoringCase(text.data(), key.data(), key.size());
}

// "\t" stands for a tab, "_" for a blank, any other character for itself.
void decodeDelimiters(std::string_view value, qxTXTinfo* info) {
  value = value.substr(0, sizeof info->delimit);
  std::memset(info->delimit, 0, sizeof info->delimit);
  size_t count = 0;
  for (size_t i = 0; i < value.size(); ++i) {
    char c = value[i] == '_' ? ' ' : value[i];
    if (value.substr(i, 2) == "\\t") {
      c = '\t';
      ++i;
    }
    info->delimit[count++] = c;
  }
}

void writeDelimiters(const qxTXTinfo& info, std::FILE* file) {
  for (const char c : info.delimit) {
    if (c == '\0') break;
    if (c == '\t') {
      std::fputs("\\t", file);
    } else {
      std::fputc(c == ' ' ? '_' : c, file);
    }
  }
}

void readSetting(std::string_view key, std::string_view value, qxTXTinfo* info) {
  if (isKey(key, "delimit")) decodeDelimiters(value, info);
  for (const IntegerKey& integer : kIntegerKeys) {
    if (isKey(key, integer.key)) info->*integer.field = integerFromText(value);
  }
  if (isKey(key, "dtformat")) {
    for (const OrderName& known : kOrderNames) {
      if (isKey(value, known.name)) info->dtformat = known.order;
    }
  }
}

const char* orderName(int32_t order) {
  return order == QX_ORDER_MDY ? "MDY" : order == QX_ORDER_DMY ? "DMY" : "YMD";
}

}  // namespace
}  // namespace qx

int32_t qxTXTreadinfo(const char* folder, const char* file, qxTXTinfo* info) {
  if (folder == nullptr || file == nullptr || info == nullptr) return QX_ERR_INVALID_PARM;
  *info = {};
  info->delimit[0] = ' ';
  qx::Path path;
  qx::joinPath(folder, file, path);
  qx::LineReader reader;
  if (qx::openLines(&reader, path, qx::kLayoutLineLength) != QX_SUCCESS) return QX_ERR_FILE_OPEN;
  qx::Line line;
  while (qx::readLine(&reader, &line)) {
    const size_t equals = line.text.find('=');
    if (equals == std::string_view::npos) continue;
    qx::readSetting(qx::trimBlanks(line.text.substr(0, equals)),
                    qx::trimBlanks(line.text.substr(equals + 1)), info);
  }
  qx::closeLines(&reader);
  return reader.status;
}

int32_t qxTXTwriteinfo(const char* folder, const char* file, const qxTXTinfo* info) {
  if (folder == nullptr || file == nullptr || info == nullptr) return QX_ERR_INVALID_PARM;
  qx::Path path;
  qx::joinPath(folder, file, path);
  std::FILE* out = qx::openFile(path, "wt");
  if (out == nullptr) return QX_ERR_FILE_OPEN;
  std::fputs("delimit  = ", out);
  qx::writeDelimiters(*info, out);
  std::fputc('\n', out);
  for (const qx::IntegerKey& integer : qx::kIntegerKeys) {
    std::fprintf(out, "%-9s= %i\n", integer.key, static_cast<int>(info->*integer.field));
  }
  std::fprintf(out, "dtformat = %s\n", qx::orderName(info->dtformat));
  const bool failed = std::ferror(out) != 0;
  return std::fclose(out) != 0 || failed ? QX_ERR_FILE_WRITE : QX_SUCCESS;
}
