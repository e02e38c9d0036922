// A plug-in of clang-tidy: lets the checks go through the declarations of this project only. By itself clang-tidy goes
// through those of Qt and the standard library too, for minutes, and then keeps silent about them.

#include <clang-tidy/ClangTidyCheck.h>
#include <clang-tidy/ClangTidyModule.h>
#include <clang-tidy/ClangTidyModuleRegistry.h>
#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>

#include <vector>

namespace {

using namespace clang;

class OwnSources final : public tidy::ClangTidyCheck
{
public:
    using ClangTidyCheck::ClangTidyCheck;

    void registerMatchers(ast_matchers::MatchFinder* finder) override
    {
        finder->addMatcher(ast_matchers::translationUnitDecl(), this);
    }

    // Called before anything inside is looked at.
    void check(const ast_matchers::MatchFinder::MatchResult& result) override
    {
        const SourceManager& sources = result.Context->getSourceManager();
        std::vector<Decl*> own;
        for (Decl* const declaration : result.Context->getTranslationUnitDecl()->decls())
            if (!sources.isInSystemHeader(sources.getExpansionLoc(declaration->getLocation())))
                own.push_back(declaration);
        result.Context->setTraversalScope(own);
    }
};

class HouseModule final : public tidy::ClangTidyModule
{
public:
    void addCheckFactories(tidy::ClangTidyCheckFactories& factories) override
    {
        factories.registerCheck<OwnSources>("house-own-sources");
    }
};

const tidy::ClangTidyModuleRegistry::Add<HouseModule> house("house", "What this project has of its own.");

} // namespace
