#include <exception>
#include <memory>
#include <string>
#include <thread>

#include <boost/exception/error_info.hpp>
#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>
#include <boost/exception_ptr.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/core/except/Exception.hpp"
#include "zorb/errors.hpp"

namespace foundation::core::except {
namespace VELTRA_TEST_FILE {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

using UnlistedError = Exception<MessageKey<"VELTRA:test", "Unlisted">, std::exception, void>;

TEST(ExceptionTest, IdentifierIsCatalogueColonKey) {
    EXPECT_EQ(zorb::RequireScalarError().getIdentifier(), "VELTRA:class:RequireScalar");
}

TEST(ExceptionTest, TextIsTheCataloguesWithTheArgumentsInTheirPlaces) {
    const zorb::RequireClassError error({"a.Wanted", "a.Given"});
    EXPECT_STREQ(
        error.what(),
        "An object of the class a.Wanted was expected; this value is of the class a.Given.");
    EXPECT_STREQ(error.getMessage(), error.what());
    EXPECT_THAT(error.getArguments(), ElementsAre("a.Wanted", "a.Given"));
}

TEST(ExceptionTest, IsEveryMemberOfTheFamilyAndAStandardException) {
    const zorb::RequireScalarError error;
    EXPECT_NE(dynamic_cast<const IException*>(&error), nullptr);
    EXPECT_NE(dynamic_cast<const IUserException*>(&error), nullptr);
    EXPECT_NE(dynamic_cast<const IMsgIDException*>(&error), nullptr);
    EXPECT_NE(dynamic_cast<const std::exception*>(&error), nullptr);
    EXPECT_NE(dynamic_cast<const boost::exception_detail::clone_base*>(&error), nullptr);
}

struct Tag;
using Note = boost::error_info<Tag, std::string>;

TEST(ExceptionTest, IsCaughtAsABoostExceptionAndKeepsWhatACatcherAddsToIt) {
    boost::exception_ptr captured;
    try {
        try {
            throw zorb::RequireScalarError();
        } catch (boost::exception& error) {
            error << Note("while the request was set");
            throw;
        }
    } catch (...) {
        captured = boost::current_exception();
    }
    try {
        boost::rethrow_exception(captured);
        FAIL() << "nothing was thrown";
    } catch (const boost::exception& error) {
        const auto* note = boost::get_error_info<Note>(error);
        ASSERT_NE(note, nullptr);
        EXPECT_EQ(*note, "while the request was set");
        EXPECT_NE(dynamic_cast<const zorb::RequireScalarError*>(&error), nullptr);
    }
}

TEST(ExceptionTest, ACloneSharesNothingThatIsAddedLater) {
    const zorb::RequireScalarError error;
    error << Note("before");
    const std::unique_ptr<const boost::exception_detail::clone_base> clone(error.clone());
    error << Note("after");
    const auto* copy = dynamic_cast<const zorb::RequireScalarError*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(*boost::get_error_info<Note>(*copy), "before");
}

TEST(ExceptionTest, IsCapturedAndThrownAgainAsWhatItWas) {
    boost::exception_ptr captured;
    std::thread([&captured] {
        try {
            throw zorb::UndefinedClassError({"a.B"});
        } catch (...) {
            captured = boost::current_exception();
        }
    }).join();
    ASSERT_TRUE(captured);
    try {
        boost::rethrow_exception(captured);
        FAIL() << "nothing was thrown";
    } catch (const zorb::UndefinedClassError& error) {
        EXPECT_EQ(error.getIdentifier(), "VELTRA:class:UndefinedClass");
        EXPECT_THAT(error.getArguments(), ElementsAre("a.B"));
        EXPECT_STREQ(error.what(), "There is no class \"a.B\".");
    }
}

TEST(MessageCatalogTest, AnIdentifierWithoutATextIsItsOwnTextWithTheArgumentsBehind) {
    EXPECT_STREQ(UnlistedError({"one", "two"}).what(), "VELTRA:test:Unlisted one two");
    EXPECT_STREQ(UnlistedError().what(), "VELTRA:test:Unlisted");
}

TEST(MessageCatalogTest, TakesTextsOfOtherLibrariesOnceForEachIdentifier) {
    using AddedError = Exception<MessageKey<"VELTRA:test", "Added">, std::exception, void>;
    MessageCatalog::addText(AddedError::identifier(), "A {0} was added.");
    EXPECT_STREQ(AddedError({"text"}).what(), "A text was added.");
    EXPECT_THAT(MessageCatalog::getIdentifiers(), Contains("VELTRA:test:Added"));

    EXPECT_THROW(MessageCatalog::addText(AddedError::identifier(), "Another."), std::logic_error);
    EXPECT_THROW(MessageCatalog::addText(zorb::RequireScalarError::identifier(), "Another."),
                 std::logic_error);
    EXPECT_STREQ(AddedError({"text"}).what(), "A text was added.");
    EXPECT_THROW(MessageCatalog::addText("NoCatalogue", "A text."), std::invalid_argument);
    EXPECT_THROW(MessageCatalog::addText("VELTRA:test:Empty", ""), std::invalid_argument);
}

TEST(MessageCatalogTest, PlacesWithoutAnArgumentStay) {
    EXPECT_EQ(MessageCatalog::getText("VELTRA:class:UndefinedClass", {}),
              "There is no class \"{0}\".");
}

TEST(MessageCatalogTest, PlacesWithinArgumentsAreNotFilled) {
    const std::string arguments[] = {"{1}", "{0}"};
    EXPECT_EQ(MessageCatalog::getText("VELTRA:class:RequireClass", arguments),
              "An object of the class {1} was expected; this value is of the class {0}.");
}

TEST(MessageCatalogTest, EveryTextIsASentenceOrAPlaceForOne) {
    const auto identifiers = MessageCatalog::getIdentifiers();
    ASSERT_THAT(identifiers, Not(IsEmpty()));
    for (const auto& identifier : identifiers) {
        const std::string text = MessageCatalog::getText(identifier, {});
        EXPECT_THAT(identifier, HasSubstr("VELTRA:"));
        EXPECT_TRUE(text.ends_with('.') || text == "{0}") << identifier << ": " << text;
    }
}

template <typename Error>
std::string textOf() {
    return Error().what();
}

TEST(MessageCatalogTest, HasATextForEveryErrorOfTheObjectSystem) {
    using namespace zorb;
    for (const auto& text : {textOf<UndefinedClassError>(), textOf<RequireScalarError>(),
                             textOf<RequireEnumerationError>(), textOf<RequireNumericError>(),
                             textOf<RequireStringError>(), textOf<RequireStringArrayError>(),
                             textOf<RequireClassError>(), textOf<NoConstructorError>(),
                             textOf<WrongArgumentCountError>()})
        EXPECT_FALSE(text.starts_with("VELTRA:")) << text;
}

}  // namespace VELTRA_TEST_FILE
}  // namespace foundation::core::except
