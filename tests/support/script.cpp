#include "support/script.h"

#include <tuple>

#include "support/calls.h"

namespace qvox_test {

namespace {

template <typename Class, typename... Types, typename Method, std::size_t... i>
Script::Function function(Method method, std::index_sequence<i...> /*numbers*/) {
    return [method](Script& script, const Words& words) -> std::string {
        Class& target = script.target<Class>(words[0]);
        std::tuple<Types...> arguments{script.argument<Types>(words.at(2 + i))...};
        const auto call = [&](const auto&... values) -> decltype(auto) {
            const std::shared_ptr<void> around = script.around_call();
            return (target.*method)(values...);
        };
        if constexpr (std::is_void_v<decltype(std::apply(call, arguments))>) {
            std::apply(call, arguments);
            return {};
        } else {
            return script.shown(std::apply(call, arguments));
        }
    };
}

template <typename Class, typename Result, typename... Types>
Script::Function of(Result (Class::*method)(Types...)) {
    return function<Class, std::decay_t<Types>...>(method, std::index_sequence_for<Types...>());
}

template <typename Class, typename Result, typename... Types>
Script::Function of(Result (Class::*method)(Types...) const) {
    return function<Class, std::decay_t<Types>...>(method, std::index_sequence_for<Types...>());
}

}  // namespace

std::map<std::string, Script::Function> Script::functions() {
    std::map<std::string, Function> all;
    for_each_call([&all](const std::string& name, auto method) { all.emplace(name, of(method)); });
    all["free"] = [](Script& script, const Words& words) {
        script.free_node(words[0]);
        return std::string();
    };
    all["names"] = [](Script& script, const Words& words) {
        return names_of(*script.node(words[0]));
    };
    return all;
}

}  // namespace qvox_test
