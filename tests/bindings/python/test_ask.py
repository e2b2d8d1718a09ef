"""Questions, as scripts ask them."""

import threading

import pytest
import veltra


def test_a_question_finds_entries_and_says_how():
    answer = veltra.ask("sort table")
    assert answer.total >= len(answer) > 0
    assert answer[0].name == "Table.sortBy"
    assert answer[0].rung == "parts"
    assert answer[0].change == ""
    assert answer[0].data.RefItem.Purpose == "Sort the rows by a column"
    assert [hit.name for hit in answer][0] == answer.hits[0].name


def test_a_slip_is_told():
    assert veltra.ask("Table.sortBuy")[0].change == "spelling: sortBy"


def test_options_limit_prefer_and_filter():
    assert len(veltra.ask("filter", limit=1)) == 1
    assert veltra.ask("filter", limit=1).total > 1
    product = veltra.ask("filter", prefer=["qix"])[0].data.HeaderInfo.ShortName
    assert product == "qix"
    assert veltra.ask("filter", products=["lumora"])[0].data.HeaderInfo.ShortName == "lumora"
    nothing = veltra.ask("Table.sortBy", types=["class"])
    assert len(nothing) == 0
    assert nothing.filtered_away == 1
    assert nothing.turned_away[0].name == "Table.sortBy"


def test_a_wrong_question_is_pointed_at():
    with pytest.raises(veltra.QuestionError, match="deprecated") as caught:
        veltra.ask("table is:new")
    assert (caught.value.position, caught.value.length) == (9, 3)
    assert isinstance(caught.value, ValueError)
    with pytest.raises(ValueError, match="bogus"):
        veltra.ask("table", types=["bogus"])
    with pytest.raises(ValueError, match="limit"):
        veltra.ask("table", limit=-1)
    with pytest.raises(TypeError):
        veltra.ask(7)


def test_threads_ask_at_once():
    found = []

    def work():
        for _ in range(50):
            found.append(veltra.ask("how to sort rows")[0].name)

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert set(found) == {"Table.sortBy"}
