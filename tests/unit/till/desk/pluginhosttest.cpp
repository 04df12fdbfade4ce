// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/pluginhost.h"

#include "host/loyalty/basicloyaltysystem.h"
#include "host/loyalty/loyaltysystems.h"
#include "host/loyalty/plugincontract.h"
#include "tests/unit/till/tilltest.h"

using namespace Qt::StringLiterals;
using tests::refusalOf;
using till::PluginHost;

namespace {

QString built(const char* file)
{
    return QString::fromUtf8(file);
}

QString refusalOfPlugin(const QString& file)
{
    return refusalOf([&] { const PluginHost host(file); });
}

/// What a refusal says around Qt's own error text, which must not be empty.
void expectRefusal(const QString& refusal, const QString& before, const QString& after)
{
    EXPECT_TRUE(refusal.startsWith(before)) << refusal.toStdString();
    EXPECT_TRUE(refusal.endsWith(after)) << refusal.toStdString();
    EXPECT_GT(refusal.size(), before.size() + after.size()) << "Qt's own text is missing";
}

} // namespace

TEST(PluginHost, aMissingFileIsNoPlugin)
{
    expectRefusal(refusalOfPlugin(u"/nowhere/liborva.so"_s),
                  u"Plug-in metadata: /nowhere/liborva.so is no plug-in ("_s,
                  u"); check the path."_s);
}

TEST(PluginHost, aFileOfSomethingElseIsNoPlugin)
{
    const TestFolder folder;
    const QString file = folder.write(u"liborva.so"_s, u"not a library at all"_s);
    expectRefusal(refusalOfPlugin(file), u"Plug-in metadata: %1 is no plug-in ("_s.arg(file),
                  u"); check the path."_s);
}

TEST(PluginHost, aLibraryWithoutMetadataIsNoPlugin)
{
    const QString file = built(ORVA_PLAIN_LIBRARY);
    expectRefusal(refusalOfPlugin(file), u"Plug-in metadata: %1 is no plug-in ("_s.arg(file),
                  u"); check the path."_s);
}

TEST(PluginHost, aPluginForSomethingElseIsRefusedBeforeItIsLoaded)
{
    const QString file = built(ORVA_OTHER_IDENTIFIER);
    expectRefusal(refusalOfPlugin(file),
                  u"Plug-in metadata: %1 is a plug-in for \"org.example.Printer\", not for "
                  "\"Orva\" (class OtherIdentifier; "_s.arg(file),
                  u"); check the path."_s);
}

TEST(PluginHost, aLibraryThatDoesNotLoadSaysWhatIsMissing)
{
    const QString file = built(ORVA_MISSING_SYMBOL);
    const QString refusal = refusalOfPlugin(file);
    expectRefusal(refusal, u"Plug-in loading: %1 cannot be loaded ("_s.arg(file),
                  u"); look for missing libraries and another Qt version."_s);
    EXPECT_TRUE(refusal.contains(u"missingFromEveryLibrary"_s)) << refusal.toStdString();
}

TEST(PluginHost, aPluginBuiltForAnotherContractIsRefusedBeforeAnythingOfItRuns)
{
    const QString file = built(ORVA_OTHER_CONTRACT);
    ASSERT_EQ(poshost::plugincontract::versionNeededBy(file), ORVA_OTHER_CONTRACT_VERSION);
    EXPECT_EQ(
        refusalOfPlugin(file),
        u"Plug-in contract: %1 was built for version %2 of the host's contract, this till has "
        "version %3; install the plug-in and the till of one release."_s.arg(file)
            .arg(ORVA_OTHER_CONTRACT_VERSION)
            .arg(poshost::plugincontract::version()));
}

TEST(PluginHost, anObjectThatIsNoLoyaltySystemFailsAtTheCast)
{
    const QString file = built(ORVA_PLAIN_OBJECT);
    expectRefusal(refusalOfPlugin(file),
                  u"Plug-in cast: the class PlainObject of %1 does not answer as "
                  "\"LoyaltySystem\" ("_s.arg(file),
                  u"); it was built for another host."_s);
}

TEST(PluginHost, aLoyaltySystemThatIsNoPluginOfThisHostFailsAtTheCast)
{
    const QString file = built(ORVA_WITHOUT_PLUGIN_INTERFACE);
    expectRefusal(refusalOfPlugin(file),
                  u"Plug-in cast: the class WithoutPluginInterface of %1 does not answer as "
                  "\"%2\" ("_s.arg(file, u"" ABSTRACT_PLUGIN_IID ""_s),
                  u"); it was built for another host."_s);
}

TEST(PluginHost, aSystemThatRefusesInitIsDropped)
{
    const QString file = built(ORVA_REFUSES_INIT);
    expectRefusal(refusalOfPlugin(file),
                  u"Plug-in initialisation: %1 does not register ("_s.arg(file),
                  u"); another loyalty system has its code."_s);
}

TEST(PluginHost, theRealPluginIsReadyAfterLoadingAndGoneAfterwards)
{
    {
        const PluginHost host(built(ORVA_PLUGIN_FILE));
        EXPECT_EQ(host.loyaltySystem().getLoyaltySystemType(), 15);
        EXPECT_EQ(LoyaltySystems::find(15), &host.loyaltySystem());
    }
    EXPECT_EQ(LoyaltySystems::find(15), nullptr);
    const PluginHost again(built(ORVA_PLUGIN_FILE));
    EXPECT_EQ(LoyaltySystems::find(15), &again.loyaltySystem());
}
