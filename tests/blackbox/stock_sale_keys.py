"""More is sold than there is, without touching the mouse."""

from person import run

import stock_sale

if __name__ == "__main__":
    run(stock_sale.with_keys)
