// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/rulesreader.h"

namespace simulator {

QByteArray builtInRules()
{
    return R"(# The rules that orva-simulator follows when it is given no file.

#seed = 7            # of faults that happen by chance
#strict = true       # refuse requests that do not fit the schemas of the documents
#unmatched = "refuse" # refuse requests that get no [[answer]]

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

# What may go wrong on purpose. Take the # away from a block to have it happen.

#[[fault]]              # the third pre-check of this card is booked, its answer is lost
#kind = "reply-lost"
#endpoint = "precheck"
#card = "2200000000017"
#request = 3

#[[fault]]              # every twentieth confirmation, by chance
#kind = "status-after-booking"
#endpoint = "checkconfirm"
#status = 503
#body = "busy"
#probability = 0.05

#[[fault]]              # the first two payment tries hang for 20 seconds
#kind = "hang-before-headers"
#endpoint = "paymenttry"
#seconds = 20
#times = 2

# Finished answers, sent instead of what the rules above would answer.

#[[answer]]             # the second pre-check of this card
#endpoint = "precheck"
#card = "2200000000017"
#request = 2
#body = "<RawCheck/>"    # or file = "answer.xml", looked up beside this file

#[[answer]]
#endpoint = "checkconfirm"
#status = 424
#body = "no such check"

#[tls]                  # HTTPS; names without a folder are looked up beside this file
#certificate = "server.pem"
#key = "server.key"
)";
}

} // namespace simulator
