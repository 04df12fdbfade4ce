# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# ask_only_what_is_promised(FOLDER): takes "const" off the operations in the headers of a host, except
# those with which the plug-in's contract promises it. What still compiles then compiles for every host
# that keeps the contract.

# take_const_off(HEADER OPERATIONS...)
function(take_const_off header)
    file(READ ${header} text)
    foreach(operation IN LISTS ARGN)
        string(REGEX REPLACE "( ${operation}\\([^)]*\\)+) const" "\\1" changed "${text}")
        if(changed STREQUAL text)
            message(FATAL_ERROR "${header}: there is no const operation ${operation}")
        endif()
        set(text "${changed}")
    endforeach()
    file(WRITE ${header} "${text}")
endfunction()

function(ask_only_what_is_promised folder)
    take_const_off(${folder}/services/config.h getString getInt)
    take_const_off(${folder}/xml/xmlwrapper.h extractElements)
    # a default argument with parentheses of its own stands in it
    file(READ ${folder}/xml/xmlwrapper.h text)
    string(REPLACE "(const QString&) {}) const;" "(const QString&) {});" changed "${text}")
    if(changed STREQUAL text)
        message(FATAL_ERROR "${folder}/xml/xmlwrapper.h: there is no const operation extractElement")
    endif()
    file(WRITE ${folder}/xml/xmlwrapper.h "${changed}")
    take_const_off(${folder}/document/abstractdocument.h getDocumentType getImpacts getCardRecord
        getCheckSum getSumToPay getPaymentSum getPluginValue)
    take_const_off(${folder}/document/documentcardrecord.h getPointsForEarn)
    take_const_off(${folder}/document/documentimpactdetail.h getPosition getDiscountType getCardType
        getDiscountSum)
endfunction()
