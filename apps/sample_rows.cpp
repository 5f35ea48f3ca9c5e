#include "sample_rows.h"

#include <array>
#include <cmath>
#include <random>

namespace varnel::app {
namespace {

struct Customer {
  const char* name;
  const char* currency;
  double rate;  // price in this currency per US dollar
};

constexpr std::array<Customer, 22> kCustomers = {{
    {"Harbor Lane Foods", "$", 1},      {"Bright Path Stationery", "$", 1},
    {"Kestrel Hardware", "$", 1},       {"Oakridge Bakery", "$", 1},
    {"Summit Outdoor Gear", "$", 1},    {"Riverside Florist", "$", 1},
    {"Juniper & Co", "$", 1},           {"Meadow Dairy", "$", 1},
    {"Copperleaf Cafe", "$", 1},        {"Northgate Books", "$", 1},
    {"Pine Street Pharmacy", "$", 1},   {"Blue Heron Hotel", "$", 1},
    {"Nova Print Shop", "$", 1},        {"O'Brien's Pub", "$", 1},
    {"Maison Dupont", "€", 0.92},       {"Bäckerei Müller", "€", 0.92},
    {"Café Lumière", "€", 0.92},        {"Thames Valley Supplies", "£", 0.79},
    {"Highland Outfitters", "£", 0.79}, {"上海华联贸易", "¥", 7.1},
    {"北京东方书店", "¥", 7.1},         {"深圳创新电子", "¥", 7.1},
}};

struct Product {
  const char* name;
  double dollars;
};

constexpr std::array<Product, 15> kProducts = {{
    {"Printer paper A4 (box)", 24.50},
    {"Ballpoint pens (12)", 6.90},
    {"Stapler", 12.75},
    {"Desk lamp", 38.00},
    {"Office chair", 189.00},
    {"Whiteboard markers", 9.40},
    {"Notebook A5", 3.20},
    {"USB-C cable", 11.99},
    {"Wireless mouse", 24.90},
    {"Monitor 24-inch", 179.00},
    {"Coffee beans 1 kg", 21.50},
    {"Paper cups (100)", 7.80},
    {"Hand sanitizer", 5.60},
    {"Label printer", 89.00},
    {"Filing cabinet", 249.00},
}};

constexpr std::array<const char*, 6> kNotes = {"Rush delivery",        "Gift wrap",
                                               "Call before delivery", "Leave at reception",
                                               "Invoice by email",     "Deliver to back door"};

// 2024-01-02, the first order day (days since 1899-12-30).
constexpr double kFirstDay = 45293;
// 2024-07-01 and 2024-11-01: older orders are mostly paid, the oldest locked.
constexpr double kMidYear = 45474;
constexpr double kNovember = 45597;

Currency PriceIn(const Customer& customer, const Product& product) {
  const double amount = product.dollars * customer.rate;
  // Yuan prices are whole; the others keep their cents.
  const double units = customer.rate > 5 ? std::round(amount) : std::round(amount * 100) / 100;
  return Currency{static_cast<int64_t>(std::llround(units * 10000))};
}

}  // namespace

std::vector<SampleOrder> SampleOrders(int count) {
  // mt19937's sequence is fixed by the standard, so every machine gets the
  // same rows; only its raw outputs are used, never a distribution.
  std::mt19937 random(2024);
  const auto pick = [&random](uint32_t n) { return static_cast<uint32_t>(random() % n); };
  std::vector<SampleOrder> orders;
  orders.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    const Customer& customer = kCustomers[pick(kCustomers.size())];
    const Product& product = kProducts[pick(kProducts.size())];
    SampleOrder order;
    order.customer = customer.name;
    order.product = product.name;
    order.qty = static_cast<int32_t>(product.dollars > 100 ? 1 + pick(4) : 1 + pick(40));
    order.price = PriceIn(customer, product);
    order.currency = customer.currency;
    order.date = Date{kFirstDay + pick(364)};
    order.paid = pick(100) < (order.date.Value < kNovember ? 90u : 40u);
    order.locked = order.paid && order.date.Value < kMidYear && pick(2) == 0;
    if (pick(100) < 15) {
      order.note = kNotes[pick(kNotes.size())];
    }
    orders.push_back(order);
  }
  return orders;
}

}  // namespace varnel::app
