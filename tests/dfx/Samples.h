#pragma once

#include <utility>
#include <vector>

#include <corvane/dfx/Value.h>

using Functor = dfx::Value<std::shared_ptr<dfx::IVoidFunctor>, 23>;

/// Notes its number when it runs, and the negative number when it ends.
struct Note : dfx::IVoidFunctor {
    Note(std::vector<int>& list, int id) : notes(list), number(id) {}
    ~Note() override { notes.push_back(-number); }
    void operator()() override { notes.push_back(number); }

    std::vector<int>& notes;
    int number;
};

template <int... N, typename Visitor, typename... T>
void visitEach(Visitor visit, std::integer_sequence<int, N...>, const T&... values) {
    (visit(std::integral_constant<int, N>(), values), ...);
}

/// Hands each held type's number, as a constant, and a value of it to `visit`.
template <typename Visitor>
void visitSamples(Visitor visit) {
    using Wide = std::int64_t;
    using Text = std::u16string;
    visitEach(visit,
              std::integer_sequence<int, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 10, 12, 12, 14, 15, 16,
                                    17, 18, 19, 20, 21, 23, 24, 25, 26, 27>(),
              true, static_cast<unsigned char>(200), static_cast<short>(-2), -3,
              static_cast<unsigned short>(60000), 4000000000U, 0.5F, QorLong{-7}, 0.1,
              std::shared_ptr<unsigned short>(), static_cast<IUnknown*>(nullptr),
              ATL::CComPtr<IUnknown>(), static_cast<IDispatch*>(nullptr), ATL::CComPtr<IDispatch>(),
              static_cast<void*>(nullptr), std::vector{1, 2}, std::vector{1.5F}, std::vector{2.5},
              std::set{2, 1}, static_cast<int*>(nullptr), static_cast<float*>(nullptr),
              static_cast<double*>(nullptr), std::shared_ptr<dfx::IVoidFunctor>(), Text(u"text"),
              std::vector{Text(), Text(u"text")},
              std::vector{std::vector<Wide>{}, std::vector<Wide>{1}},
              std::map<Wide, std::set<Wide>>{{1, {2}}});
}
