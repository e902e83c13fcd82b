// The words the sample business is made of: a small workshop that makes furniture and sells things for the home.
#pragma once

#include <array>
#include <string_view>

namespace vocabulary {

using Words = std::string_view;

struct Person {
    Words title;
    Words first;
};

inline constexpr std::array firstNames {
    Person {"Ms", "Harriet"},
    Person {"Ms", "Mercy"},
    Person {"Dr", "Ines"},
    Person {"Ms", "Priya"},
    Person {"Mr", "João"},
    Person {"Mrs", "Elsie"},
    Person {"Mr", "Tomasz"},
    Person {"Ms", "Zoë"},
    Person {"Mr", "Björn"},
    Person {"Mrs", "Siobhán"},
    Person {"Mr", "Kwame"},
    Person {"Ms", "Françoise"},
    Person {"Mr", "Dmitri"},
    Person {"Ms", "Ayşe"},
    Person {"Mr", "Łukasz"},
    Person {"Ms", "Mei"},
    Person {"Mr", "Arjun"},
    Person {"Mrs", "Gwenllian"},
    Person {"Mr", "Oskar"},
    Person {"Dr", "Amara"},
    Person {"Mr", "Noah"},
    Person {"Ms", "Freya"},
    Person {"Mr", "Idris"},
    Person {"Ms", "Ottilie"},
    Person {"Mr", "Søren"},
    Person {"Ms", "Νίκη"},
    Person {"Mr", "Hiroshi"},
    Person {"Mrs", "Maud"},
    Person {"Mr", "Callum"},
    Person {"Ms", "Beatriz"},
};
inline constexpr std::array<Words, 36> lastNames {"Bloom", "Okafor", "Valdés", "Raman", "Ferreira", "Marchbank", "Nowak", "Lindqvist",
    "Åkesson", "Ó Briain", "Mensah", "Lefèvre", "Sokolov", "Yılmaz", "Wójcik", "Chen", "Kapoor", "Prys-Jones", "Brandt", "Adeyemi",
    "Hartley", "Thorne", "Ward", "Fairfax", "Holm", "Παπαδοπούλου", "Tanaka", "Pemberton", "MacLeod", "Sousa", "O'Dowd", "Whitlock",
    "Castellanos", "Grüneberg", "Ashworth", "Quill"};
inline constexpr std::array<Words, 24> companyNames {"Kestrel Joinery Ltd", "Orchard Press", "The Copper Kettle", "Blue Door Café",
    "Lantern & Loom", "Northgate Dental", "Harbour Bookshop", "Mill Lane Pottery", "Fox & Fennel", "St Anne's School", "Larkspur Interiors",
    "Bright & Sons", "Wharf Street Studios", "The Reading Room", "Saltmarsh Brewery", "Moorland Vets", "Quay Side \"Fish & Chips\"",
    "Halden <Architects>", "Tall Trees Nursery", "Café Müller", "Pebble Yoga", "Granary Bakery", "Old Forge Garage", "Heath & Hollow"};
inline constexpr std::array<Words, 10> supplierNames {"Fenwood Timber", "Harrow & Co Ironmongers", "Lindqvist Oils", "Lumen Wax",
    "Severn Packaging", "Orchard Press (trade)", "Brightwater Glass", "Dale Fabrics", "Cotswold Wool", "Penrose Paper"};
struct Place {
    Words town;
    Words county;
    Words postcode;
};
inline constexpr std::array places {
    Place {"Otley", "West Yorkshire", "LS21"},
    Place {"Skipton", "North Yorkshire", "BD23"},
    Place {"Hebden Bridge", "West Yorkshire", "HX7"},
    Place {"Ilkley", "West Yorkshire", "LS29"},
    Place {"Harrogate", "North Yorkshire", "HG1"},
    Place {"Settle", "North Yorkshire", "BD24"},
    Place {"Saltaire", "West Yorkshire", "BD18"},
    Place {"Kendal", "Cumbria", "LA9"},
    Place {"Buxton", "Derbyshire", "SK17"},
    Place {"Whitby", "North Yorkshire", "YO21"},
    Place {"Ludlow", "Shropshire", "SY8"},
    Place {"Bakewell", "Derbyshire", "DE45"},
};
inline constexpr std::array<Words, 16> streets {"Mill Lane", "Church Street", "Station Road", "The Old Forge", "High Street", "Canal Wharf",
    "Beech Grove", "Market Place", "Chapel Row", "Moor View", "Bridge End", "Queen's Parade", "Quarry Hill", "Weavers Court",
    "North Parade", "Spring Gardens"};

struct Product {
    Words code;
    Words name;
    Words brand;
    Words category;
    int priceInPence;
    Words unit;
};
inline constexpr std::array products {
    Product {"OAK", "Oak shelf", "Fenwood", "Furniture, Shelves", 8400, ""},
    Product {"ASH", "Ash bench", "Fenwood", "Furniture", 24500, ""},
    Product {"TBL", "Kitchen table", "Fenwood", "Furniture", 89000, ""},
    Product {"STL", "Workshop stool", "Fenwood", "Furniture", 7200, ""},
    Product {"BRK", "Shelf bracket, cast iron", "Harrow & Co", "Ironmongery", 725, ""},
    Product {"HNG", "Butt hinge, brass", "Harrow & Co", "Ironmongery", 480, "pair"},
    Product {"KNB", "Drawer knob", "Harrow & Co", "Ironmongery", 340, ""},
    Product {"SCR", "Wood screws", "Harrow & Co", "Ironmongery", 295, "box"},
    Product {"FIN", "Hard wax oil", "Lindqvist", "Finishes", 1850, "tin"},
    Product {"SOP", "Wood soap", "Lindqvist", "Finishes", 990, "bottle"},
    Product {"CND", "Beeswax candle", "Lumen", "Gifts", 950, ""},
    Product {"MUG", "Stoneware mug", "Mill Lane", "Gifts, Kitchen", 1600, ""},
    Product {"BWL", "Serving bowl", "Mill Lane", "Kitchen", 3200, ""},
    Product {"CRD", "Greeting card", "Penrose", "Gifts", 275, ""},
    Product {"THR", "Wool throw", "Cotswold", "Textiles", 6900, ""},
    Product {"CSH", "Linen cushion", "Dale", "Textiles", 3450, ""},
    Product {"BK", "The care of timber", "Orchard Press", "Books", 1200, ""},
    Product {"GLS", "Glass dome", "Brightwater", "Gifts", 2750, ""},
    Product {"TEA", "Tea caddy", "Lumen", "Kitchen, Teapots", 1425, ""},
    Product {"WRK", "Workshop day", "Fenwood", "Courses", 9500, "place"},
};
inline constexpr std::array<Words, 10> variations {
    "Natural oil", "Black", "Clear", "Sea green", "Honey", "Wren", "Large", "Small", "Pair, left & right", "Charcoal"};
inline constexpr std::array<Words, 8> kits {"Gift set, twelve boxes", "Shelf kit", "Oil and soap set", "New home box", "Tea for two",
    "Workbench kit", "Reading corner", "Candle and card"};
inline constexpr std::array<Words, 18> orderTitles {"Oak shelving for the reading room", "Kitchen table, ash, 220 cm", "Replacement hinges",
    "Annual service of three mixers", "Window boxes, painted grey", "Gift set, twelve boxes", "Workshop day, four places",
    "Signage for the new shop", "Repair of garden bench", "Monthly coffee supply", "Spring brochure, 500 copies", "Counter for the café",
    "Christmas presents <wrapped>", "Bookcase, 3 bays", "Chairs & stools", "Samples", "Bathroom cabinet", "Wedding list"};
inline constexpr std::array<Words, 6> descriptions {
    "Measure on site before cutting. Left bay is 4 mm narrower.\nDeliver before noon, side entrance.", "Ring the day before.", "", "",
    "Collects from the workshop.", "Invoice to head office, goods to the shop."};
inline constexpr std::array<Words, 4> paymentMethods {"Bank transfer", "Card", "Cash", "web"};
inline constexpr std::array<Words, 8> tasks {"Ring about delivery", "Send drawing", "Order timber", "Photograph new stock", "VAT return",
    "Book the van", "Sharpen plane irons", "Update price list"};
inline constexpr std::array<Words, 6> goals {
    "New web shop", "Christmas market", "Second workshop bench", "Cut waste by a third", "Trade customers in Cumbria", "Newsletter"};

} // namespace vocabulary
