#include "tessara/documents/DecimalDigits.h"

#include <algorithm>
#include <vector>

namespace tessara {

std::string DecimalDigits::stripLeadingZeros(std::string digits) {
    const auto first = digits.find_first_not_of('0');
    return first == std::string::npos ? std::string("0") : digits.substr(first);
}

int DecimalDigits::compareDigits(const std::string& a, const std::string& b) {
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    const int c = a.compare(b);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

std::string DecimalDigits::addDigits(const std::string& a, const std::string& b) {
    std::string result;
    int carry = 0;
    for (size_t i = 0; i < std::max(a.size(), b.size()) || carry; ++i) {
        int sum = carry;
        if (i < a.size())
            sum += a[a.size() - 1 - i] - '0';
        if (i < b.size())
            sum += b[b.size() - 1 - i] - '0';
        result.push_back(char('0' + sum % 10));
        carry = sum / 10;
    }
    std::reverse(result.begin(), result.end());
    return stripLeadingZeros(result);
}

// a - b for a >= b.
std::string DecimalDigits::subtractDigits(const std::string& a, const std::string& b) {
    std::string result(a);
    int borrow = 0;
    for (size_t i = 0; i < result.size(); ++i) {
        const size_t pos = result.size() - 1 - i;
        int digit = result[pos] - '0' - borrow - (i < b.size() ? b[b.size() - 1 - i] - '0' : 0);
        borrow = digit < 0 ? 1 : 0;
        result[pos] = char('0' + digit + borrow * 10);
    }
    return stripLeadingZeros(result);
}

std::string DecimalDigits::multiplyDigits(const std::string& a, const std::string& b) {
    std::vector<int> product(a.size() + b.size(), 0);
    for (size_t i = a.size(); i-- > 0;)
        for (size_t j = b.size(); j-- > 0;)
            product[i + j + 1] += (a[i] - '0') * (b[j] - '0');
    for (size_t k = product.size(); k-- > 1;) {
        product[k - 1] += product[k] / 10;
        product[k] %= 10;
    }
    std::string result;
    for (int digit : product)
        result.push_back(char('0' + digit));
    return stripLeadingZeros(result);
}

// Integer quotient of two digit strings (divisor non-zero).
std::string DecimalDigits::divideDigits(const std::string& dividend, const std::string& divisor) {
    std::string quotient;
    std::string remainder = "0";
    for (char digit : dividend) {
        remainder = stripLeadingZeros(remainder + digit);
        int q = 0;
        while (compareDigits(remainder, divisor) >= 0) {
            remainder = subtractDigits(remainder, divisor);
            ++q;
        }
        quotient.push_back(char('0' + q));
    }
    return stripLeadingZeros(quotient);
}

} // namespace tessara
