// The exception that ends a data exchange on purpose (CDataExchange::Fail).
// UpdateData catches it and answers FALSE; it never leaves UpdateData.
#pragma once

class CUserException
{
};

[[noreturn]] inline void AfxThrowUserException()
{
    throw CUserException();
}
