// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/sharing/sharedstore.h"

#include "host/services/config.h"
#include "till/failure.h"
#include "till/reason.h"

using namespace Qt::StringLiterals;

namespace till {

std::unique_ptr<SharedStore> SharedStore::configured()
{
    const std::optional<poshost::StoreSetup> found = poshost::StoreSetup::configured();
    return found ? std::make_unique<SharedStore>(*found) : nullptr;
}

SharedStore::SharedStore(const poshost::StoreSetup& configuration) : setup(configuration)
{
    const Config* const config = Singleton<Config>::instance;
    name = config == nullptr ? QString() : config->getString(u"till:name"_s, QString());
}

orvastore::SharedBooks& SharedStore::books()
{
    if (!opened) {
        poshost::Message trouble;
        opened = setup.books(trouble);
        if (!opened) {
            throw Failure(said(trouble));
        }
    }
    return *opened;
}

} // namespace till
