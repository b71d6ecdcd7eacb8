// An operation beside its model: both are called with the same arguments, and the status and every byte of memory must
// be the same. operation(level, ...) and model share one name: RUX_OPERATION(ruxiCopy_8u_C1R).
#pragma once

#include <tuple>

#include "support/call.h"
#include "support/levels.h"
#include "support/note.h"
#include "support/operand.h"

namespace rux::test {

template <class Function, class Model>
struct Operation {
    const char* name;
    Function function;
    Model model;
};

template <class Function, class Model>
Operation<Function, Model> operationOf(const char* name, Function function, Model model)
{
    return {name, function, model};
}

#define RUX_OPERATION(name) rux::test::operationOf(#name, &::name, &rux::model::name)

// The operands of one comparison.
template <class... Arguments>
class Operands {
public:
    explicit Operands(const Arguments&... arguments) : operands(Operand<Arguments>(arguments, clones)...) {}

    // Calls both and compares; the status is the operation's.
    template <class Op>
    ruxStatus compare(const Op& operation, Level level, const HostState& state)
    {
        const Note note([&] { return describe(operation.name, level); });
        const auto [status, expected] = std::apply(
            [&](auto&... operand) {
                const ruxStatus returned = callUnder(state, operation.function, operand.forOperation()...);
                return std::pair(returned, callModel(operation.model, level, operand.forModel()...));
            },
            operands);
        EXPECT_EQ(status, expected) << "is the status, and not the model's; in\n" << Note::all();
        eachOperand([](const auto& operand) { EXPECT_TRUE(operand.matches()) << Note::all(); });
        return status;
    }

    void digest(Digest& digest)
    {
        eachOperand([&](const auto& operand) { operand.digest(digest); });
    }

    // All memory, to see that nothing was written.
    uint64_t fingerprint()
    {
        Digest digest;
        eachOperand([&](const auto& operand) { operand.digestAll(digest); });
        return digest.value();
    }

    static constexpr size_t count = sizeof...(Arguments);

    std::vector<int> choices()
    {
        std::vector<int> numbers;
        eachOperand([&](const auto& operand) { numbers.push_back(operand.choices()); });
        return numbers;
    }
    void choose(const std::vector<int>& numbers)
    {
        size_t i = 0;
        eachOperand([&](auto& operand) { operand.choose(numbers[i++]); });
    }

private:
    template <class Action>
    void eachOperand(Action action)
    {
        std::apply([&](auto&... operand) { (action(operand), ...); }, operands);
    }

    std::string describe(const char* name, Level level)
    {
        std::string text = std::string(name) + " at " + nameOf(level);
        eachOperand([&](const auto& operand) { text += "\n    " + operand.describe(); });
        return text;
    }

    Clones clones;
    std::tuple<Operand<Arguments>...> operands;
};

// Every combination of right and wrong choices while they are few; else each choice and each pair of choices. The
// first is all right.
std::vector<std::vector<int>> combinations(const std::vector<int>& choices);

}
