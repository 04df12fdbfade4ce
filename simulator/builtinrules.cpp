// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rulesreader.h"

namespace simulator {

QByteArray builtInRules()
{
    return R"(# The rules that orva-simulator follows when it is given no file.

[auth]
user = "till"
password = "secret"
apiKey = "demo"

[discount]
percent = 5          # of every line's total
roundDownTo = 1.00   # the check is rounded down to whole roubles

[discount.sku]       # other percentages for single goods codes
"1001" = 10
"1009" = 0

[earn]
percent = 5          # of what is left of the line after its discounts

[earn.sku]
"1009" = 0

[spend]
percent = 50         # the most that points may pay of the same amount

[spend.sku]
"1009" = 0

[[card]]
number = "2200000000017"
name = "Анна"
surname = "Соколова"
balance = 500.00

[[card]]
number = "2200000000024"
name = "Борис"
surname = "Орлов"
balance = 75.50

[[card]]
number = "2200000000031"
name = "Вера"
surname = "Лисицына"
balance = 0

[[message]]
channel = "pos"
text = "{name} {surname}: на карте {balance}, можно списать {spend}"

[[message]]
channel = "check"
text = "{name}, за эту покупку начислим {earn} баллов"
)";
}

} // namespace simulator
