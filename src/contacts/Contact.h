// A person or company that the business deals with.
#pragma once

#include "storage/Record.h"

#include <array>
#include <span>

struct ContactValues {
    Text name;
    Text title;
    Text salutation;
    Text ref;
    Text add1;
    Text add2;
    Text add3;
    Text county;
    Text postcode;
    Text country;
    Text phone;
    Text mobile;
    Text fax;
    Text extension;
    Text email;
    Text website;
    Text jobTitle;
    Text comments;
    Text kind = literalText<"Individual">();
    Text type = literalText<"Customer">();
    Text companyName;
    /// Id of the company that a company contact belongs to, 0 for none.
    int company = 0;

    bool operator==(const ContactValues&) const = default;
};

inline constexpr std::array contactFields {
    field<&ContactValues::add1>("add1").searched(),
    field<&ContactValues::add2>("add2").searched(),
    field<&ContactValues::add3>("add3").searched(),
    field<&ContactValues::postcode>("postcode").searched(),
    field<&ContactValues::comments>("comments").searched(),
    field<&ContactValues::country>("country").searched(),
    field<&ContactValues::county>("county").searched(),
    field<&ContactValues::email>("email").searched(),
    field<&ContactValues::extension>("extension").searched(),
    field<&ContactValues::fax>("fax").searched(),
    field<&ContactValues::jobTitle>("jobTitle").stores("jobtitle").searched(),
    field<&ContactValues::kind>("kind").searched(),
    field<&ContactValues::mobile>("mobile").searched(),
    field<&ContactValues::name>("name").searched(),
    field<&ContactValues::phone>("phone").searched(),
    field<&ContactValues::ref>("ref").searched(),
    field<&ContactValues::title>("title").searched(),
    field<&ContactValues::type>("type").searched(),
    field<&ContactValues::website>("website").searched(),
    field<&ContactValues::salutation>("salutation").searched(),
    field<&ContactValues::companyName>("companyname").getOnly(),
    field<&ContactValues::company>("company").always(),
};
static_assert(namesAreUnique(contactFields));

class Contact : public Record<Contact, ContactValues> {
public:
    struct Nested { };
    static constexpr bool idIsSettable = true;
    static constexpr auto& fieldRows() { return contactFields; }
    static std::span<const DerivedField<Contact>> derivedFields();
    static std::span<Text ContactValues::*const> shownTexts();

    std::string_view getName() const { return values().name; }
    std::string_view getTitle() const { return values().title; }
    std::string_view getSalutation() const { return values().salutation; }
    std::string_view getRef() const { return values().ref; }
    std::string_view getAdd1() const { return values().add1; }
    std::string_view getAdd2() const { return values().add2; }
    std::string_view getAdd3() const { return values().add3; }
    std::string_view getCounty() const { return values().county; }
    std::string_view getPostcode() const { return values().postcode; }
    std::string_view getCountry() const { return values().country; }
    std::string_view getPhone() const { return values().phone; }
    std::string_view getMobile() const { return values().mobile; }
    std::string_view getFax() const { return values().fax; }
    std::string_view getExtension() const { return values().extension; }
    std::string_view getEmail() const { return values().email; }
    std::string_view getWebsite() const { return values().website; }
    std::string_view getJobTitle() const { return values().jobTitle; }
    std::string_view getComments() const { return values().comments; }
    std::string_view getKind() const { return values().kind; }
    std::string getType() const override { return values().type.string(); }
    std::string_view getCompanyName() const { return values().companyName; }
    int getCompany() const { return values().company; }

    void setName(std::string_view text) { set(&ContactValues::name, text); }
    void setTitle(std::string_view text) { set(&ContactValues::title, text); }
    void setSalutation(std::string_view text) { set(&ContactValues::salutation, text); }
    void setRef(std::string_view text) { set(&ContactValues::ref, text); }
    void setAdd1(std::string_view text) { set(&ContactValues::add1, text); }
    void setAdd2(std::string_view text) { set(&ContactValues::add2, text); }
    void setAdd3(std::string_view text) { set(&ContactValues::add3, text); }
    void setCounty(std::string_view text) { set(&ContactValues::county, text); }
    void setPostcode(std::string_view text) { set(&ContactValues::postcode, text); }
    void setCountry(std::string_view text) { set(&ContactValues::country, text); }
    void setPhone(std::string_view text) { set(&ContactValues::phone, text); }
    void setMobile(std::string_view text) { set(&ContactValues::mobile, text); }
    void setFax(std::string_view text) { set(&ContactValues::fax, text); }
    void setExtension(std::string_view text) { set(&ContactValues::extension, text); }
    void setEmail(std::string_view text) { set(&ContactValues::email, text); }
    void setWebsite(std::string_view text) { set(&ContactValues::website, text); }
    void setJobTitle(std::string_view text) { set(&ContactValues::jobTitle, text); }
    void setComments(std::string_view text) { set(&ContactValues::comments, text); }
    void setKind(std::string_view text) { set(&ContactValues::kind, text); }
    void setType(std::string_view text) { set(&ContactValues::type, text); }
    void setCompanyName(std::string_view text) { set(&ContactValues::companyName, text); }
    void setCompany(int id) { set(&ContactValues::company, id); }
    void makeCompany() { setKind("Company"); }

    bool isCompany() const { return values().kind == "Company"; }
    bool isCompanyContact() const { return values().kind == "Company Contact"; }

    /// add1, add2, add3 and postcode with blanks between; empty parts leave double blanks.
    std::string getAddress() const;
    std::string getShortAddress() const;
    std::string getFirstname() const;
    std::string getSurname() const;
    /// Whether name and first address line are the same, whatever the case.
    bool isTheSameContactAs(const Contact& other) const;
};
