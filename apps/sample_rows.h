// The orders of the sample database: the same few hundred believable rows on
// every machine (a fixed seed), a year of office-supply orders from shops in
// several currencies.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "varnel/variant.h"

namespace varnel::app {

struct SampleOrder {
  std::string customer;
  std::string product;
  int32_t qty = 1;
  Currency price;
  std::string currency;  // the currency sign: $ € £ ¥
  Date date;
  bool paid = false;
  bool locked = false;  // an old paid order that may no longer change
  std::string note;     // "" = none
};

std::vector<SampleOrder> SampleOrders(int count);

}  // namespace varnel::app
